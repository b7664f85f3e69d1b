#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <QVector>

#include "lineclient.h"
#include "simulator/faults/faultfile.h"
#include "simulator/line/instrument.h"
#include "support/wire.h"

/// Returns the command that a person would write like this.
inline Simulator::ControlCommand Command(const char* text)
{
    QString error;
    return Simulator::ParseControlCommand(QLatin1String(text), &error).value();
}

/// An instrument and a program that has opened its line.
class AskedInstrument : public Simulator::Instrument
{
public:
    explicit AskedInstrument(const Simulator::InstrumentOptions& options = {})
        : Instrument(options), client(DevicePath())
    {
    }

    QByteArray Ask(const QByteArray& request, int answerSize) const
    {
        return client.Ask(request, answerSize);
    }

    /// Returns the two bytes of the status, in hexadecimal.
    QByteArray AskStatus() const { return client.Ask(Wire::ReadStatus, 4).left(2).toHex(); }

    /// Adds the faults of a JSON text without its outermost brackets.
    bool Set(const char* faults)
    {
        return AddFaults(Simulator::ParseFaults(QByteArray("{\"faults\":[") + faults + "]}"));
    }

    /// Returns the requests of the exchanges so far.
    QVector<QByteArray> Requests() const
    {
        QVector<QByteArray> requests;
        for (const Simulator::Exchange& exchange : Exchanges()) {
            requests.append(exchange.request);
        }
        return requests;
    }

    /// Returns how long the first request waited for its answer.
    Simulator::Clock::duration AnswerTime() const
    {
        const Simulator::Exchange exchange = Exchanges().at(0);
        return exchange.answeredAt - exchange.receivedAt;
    }

    /// Brings an RCD test to its run.
    bool StartRcdTest() const
    {
        return Ask(QByteArray::fromHex("500a000005ffffffffc327"), 3) == Wire::Acknowledge &&
               Ask(Wire::StartMeasurement, 3) == Wire::Acknowledge;
    }

    LineClient client;
};

/// Returns the options of an instrument whose RCD tests are prepared at once.
inline Simulator::InstrumentOptions RcdOptions(std::chrono::milliseconds statusPeriod,
                                               std::chrono::milliseconds run)
{
    Simulator::InstrumentOptions options;
    options.model.rcdTimings.preparing = std::chrono::milliseconds(0);
    options.model.rcdTimings.statusPeriod = statusPeriod;
    options.model.rcdTimings.run = run;
    return options;
}

constexpr std::chrono::milliseconds Long{600000};

/// The file of a log, whose lines are read without their times.
class LogFile
{
public:
    QString Path() const { return _folder.filePath(QStringLiteral("log")); }

    QByteArray Lines() const
    {
        QByteArrayList lines;
        QFile file(Path());
        file.open(QIODevice::ReadOnly);
        for (const QByteArray& line : file.readAll().split('\n')) {
            lines.append(line.mid(line.indexOf(' ') + 1));
        }
        return lines.join('\n');
    }

private:
    QTemporaryDir _folder;
};
