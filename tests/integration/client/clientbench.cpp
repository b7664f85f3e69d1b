#include "integration/client/clientbench.h"

#include <algorithm>

#include "support/wire.h"

using VesmarClient::Instrument;
using VesmarClient::LinkState;
using VesmarClient::Measurement;
using VesmarClient::Phase;
using VesmarClient::Result;
using VesmarClient::Settings;

void ClientBench::Connect()
{
    client.open();
    AWAIT_EQUAL(client.linkState(), LinkState::Up);
}

void ClientBench::Execute(const char* command)
{
    QString error;
    const auto parsed = Simulator::ParseControlCommand(QString::fromLatin1(command), &error);
    QVERIFY2(parsed || qstrlen(command) == 0, qPrintable(error));
    if (parsed) {
        simulator.Execute(*parsed);
    }
}

bool ClientBench::HasPrepared() const
{
    const QByteArrayList requests = simulator.Sent();
    return std::any_of(requests.cbegin(), requests.cend(), [](const QByteArray& request) {
        return request.front() == Wire::PrepareNothing.front();
    });
}

void ClientBench::Plug()
{
    simulator.Plug();
    simulator.Attach();
}

Measured::Measured(ClientBench& bench, const char* words)
    : _job(bench.client.measure(SettingsOf(QString::fromLatin1(words))))
{
    QObject::connect(_job, &Measurement::phaseChanged, &_context,
                     [this](Phase phase) { phases.append(phase); });
    QObject::connect(_job, &Measurement::reading, &_context,
                     [this](const Result& result) { results.append(result); });
    QObject::connect(_job, &Measurement::finished, &_context, [this, &bench] { wasOff = bench.IsOff(); });
}

void Measured::VerifyEnd(VesmarClient::Outcome outcome, const char* failure) const
{
    AwaitEnd();
    QCOMPARE(_job->failure().name, QString::fromLatin1(failure));
    QCOMPARE(_job->outcome(), outcome);
    QVERIFY(_job->isStopConfirmed());
    QVERIFY(wasOff);
}

Settings SettingsOf(const QString& words)
{
    const QStringList all = words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    Settings settings(all.value(0));
    const auto function = VesmarClient::Functions::find(all.value(0));
    for (int i = 1; i < all.size(); ++i) {
        const QString name = all.at(i).mid(2);
        const QString next = all.value(i + 1, QStringLiteral("--"));
        const bool isFlag = next.startsWith(QLatin1String("--"));
        if (!function.option(name).identifier.isEmpty()) {
            settings.set(name, isFlag ? QVariant(true) : QVariant(next));
        }
        i += isFlag ? 0 : 1;
    }
    return settings;
}
