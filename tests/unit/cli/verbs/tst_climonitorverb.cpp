#include <QJsonArray>
#include <QtTest>

#include <atomic>
#include <csignal>

#include "support/serialdevice.h"
#include "unit/cli/kit/signaltest.h"
#include "unit/cli/verbs/verbtest.h"

namespace
{

Outcome RunMonitor()
{
    return RunVerb({"vesmar", "monitor", "--json", "--timeout=3600"});
}

/// "PROPERTY VALUE" of every line, enumerators by their number.
QStringList Told(const Outcome& outcome)
{
    QStringList told;
    for (const QJsonObject& object : outcome.Objects()) {
        if (object.value(QStringLiteral("event")) != QStringLiteral("change")) {
            continue;
        }
        const QJsonValue value = object.value(QStringLiteral("value"));
        const QString text = value.isObject() && value.toObject().contains(QStringLiteral("number"))
                                 ? QString::number(value.toObject().value(QStringLiteral("number")).toInt())
                                 : value.toVariant().toString();
        told.append(object.value(QStringLiteral("property")).toString() + QLatin1Char(' ') + text);
    }
    return told;
}

QStringList PictureOfAnInstrument()
{
    return {QStringLiteral("DeviceInformation "), QStringLiteral("TesterMode 0"),
            QStringLiteral("ErrorCode 15")};
}

} // namespace

class TestCliMonitorVerb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ShowsEveryChangeUntilASignal();
    void EndsAfterTheTimeGiven();
    void ShowsTextWithoutJson();
    void ShowsMainsReadings();
    void LossOfTheLinkIsShownAndItGoesOn();
    void UpdateModeIsPointedOut();
    void SignalBeforeTheLinkIsUp();
    void DeviceThatIsMissing();
    void RefusalIsExplained();
};

void TestCliMonitorVerb::ShowsEveryChangeUntilASignal()
{
    ScriptedPeer peer;
    std::atomic<int> statuses{0};
    peer.Answer([&statuses](const QByteArray& request) {
        Answers answers;
        if (request.at(0) == 's') {
            ++statuses;
            if (statuses >= 2) { // while monitoring
                answers.status = QByteArray::fromHex("003C");
            }
            if (statuses == 4) {
                ::kill(::getpid(), SIGINT);
            }
        }
        return answers.To(request);
    });
    const Outcome outcome = RunMonitor();
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    const QStringList expected =
        QStringList{QStringLiteral("CurrentMeasurementType 0"), QStringLiteral("StartTestStatus 14")} +
        PictureOfAnInstrument() +
        QStringList{QStringLiteral("CurrentDateTime 2024-12-31T23:59:58"),
                    QStringLiteral("CalibrationDateTime 2023-01-02T00:00:00"), QStringLiteral("ErrorCode 3"),
                    QStringLiteral("StartTestStatus 12")};
    QCOMPARE(Told(outcome), expected);
    for (const QJsonObject& object : outcome.Objects()) {
        const QString time = object.value(QStringLiteral("time")).toString();
        QVERIFY2(QDateTime::fromString(time, Qt::ISODateWithMs).isValid(), qPrintable(time));
    }
    QCOMPARE(outcome.Objects().last().value(QStringLiteral("message")).toString(),
             QStringLiteral("Monitored until signal 2."));
}

void TestCliMonitorVerb::EndsAfterTheTimeGiven()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Answers().To(request); });
    QElapsedTimer timer;
    timer.start();
    const Outcome outcome = RunVerb({"vesmar", "monitor", "--json", "--for", "0.5"});
    QVERIFY(timer.elapsed() >= 500);
    QCOMPARE(outcome.status, 0);
    QVERIFY(Told(outcome).contains(QStringLiteral("CalibrationDateTime 2023-01-02T00:00:00")));
}

void TestCliMonitorVerb::ShowsTextWithoutJson()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Answers().To(request); });
    const Outcome outcome = RunVerb({"vesmar", "monitor", "--for", "0"});
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.output.contains("  TesterMode                 Normal (0)\n"),
             outcome.output.constData());
}

void TestCliMonitorVerb::ShowsMainsReadings()
{
    Answers answers;
    answers.status = QByteArray::fromHex("80FE");
    // 230.5, 0.25 and 50 in little-endian single precision, three values unused.
    const QByteArray readings = QByteArray::fromHex("00806643"
                                                    "0000803E"
                                                    "00004842"
                                                    "000000000000000000000000");
    ScriptedPeer peer;
    std::atomic<int> asked{0};
    peer.Answer([&asked, answers, readings](const QByteArray& request) {
        if (request.at(0) != 'e') {
            return answers.To(request);
        }
        if (++asked == 2) {
            ::kill(::getpid(), SIGTERM);
        }
        return WithChecksum(readings);
    });
    const Outcome outcome = RunMonitor();
    QCOMPARE(outcome.status, 0);
    QVERIFY2(
        outcome.output.contains(
            R"("value":{"name":"Monitoring","number":0,"readings":{"ULN":230.5,"UNPE":0.25,"frequency":50}})"),
        outcome.output.constData());
}

void TestCliMonitorVerb::LossOfTheLinkIsShownAndItGoesOn()
{
    ScriptedPeer peer;
    std::atomic<int> statuses{0};
    std::atomic<int> calibrations{0};
    peer.Answer([&statuses, &calibrations](const QByteArray& request) {
        if (request.at(0) == 's') {
            ++statuses;
            if (statuses >= 2 && statuses <= 5) { // a whole request, and the first check of the recovery
                return Answers::Refusal();
            }
        }
        if (request.at(0) == 'T' && ++calibrations == 2) {
            ::kill(::getpid(), SIGINT);
        }
        return Answers().To(request);
    });
    const Outcome outcome = RunMonitor();
    QCOMPARE(outcome.status, 0);
    const QStringList told = Told(outcome);
    const int loss = told.indexOf(QStringLiteral("ErrorCode 103"));
    QVERIFY(loss > 0);
    const QStringList expected = QStringList{QStringLiteral("ErrorCode 15")} + PictureOfAnInstrument() +
                                 QStringList{QStringLiteral("CalibrationDateTime 2023-01-02T00:00:00")};
    QCOMPARE(told.mid(loss + 1), expected);
}

void TestCliMonitorVerb::UpdateModeIsPointedOut()
{
    ScriptedPeer peer;
    std::atomic<int> statuses{0};
    peer.Answer([&statuses](const QByteArray& request) {
        Answers answers;
        answers.status = QByteArray::fromHex("60FE");
        if (request.at(0) == 's' && ++statuses == 4) {
            ::kill(::getpid(), SIGINT);
        }
        return answers.To(request);
    });
    const Outcome outcome = RunMonitor();
    QCOMPARE(outcome.status, 0);
    QVERIFY(Told(outcome).contains(QStringLiteral("TesterMode 3")));
    QCOMPARE(outcome.errors,
             QByteArray("vesmar: The instrument is in update mode (3) and waits for firmware; run "
                        "vesmar update IMAGE --confirmation FILE.\n"));
}

void TestCliMonitorVerb::SignalBeforeTheLinkIsUp()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray&) {
        ::kill(::getpid(), SIGINT);
        return QByteArray();
    });
    const Outcome outcome = RunMonitor();
    QCOMPARE(outcome.status, 128 + SIGINT);
    QCOMPARE(outcome.Objects().last().value(QStringLiteral("outcome")).toString(),
             QStringLiteral("interrupted"));
}

void TestCliMonitorVerb::DeviceThatIsMissing()
{
    RedirectSerialDevice(QByteArray());
    const Outcome outcome = RunMonitor();
    QCOMPARE(outcome.status, 2);
    QCOMPARE(Told(outcome).first(), QStringLiteral("ErrorCode 103"));
    QCOMPARE(outcome.Objects().last().value(QStringLiteral("reason")).toString(),
             QStringLiteral("device-missing"));
}

/// Once the library has found out, which takes it ten seconds.
void TestCliMonitorVerb::RefusalIsExplained()
{
    ScriptedPeer peer;
    peer.AnswerAlways(Answers::Refusal());
    const Outcome outcome = RunVerb({"vesmar", "monitor", "--json", "--timeout", "15"});
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.errors.count('\n'), 1);
    const QJsonObject result = outcome.Objects().last();
    QCOMPARE(result.value(QStringLiteral("reason")).toString(), QStringLiteral("refused"));
    const QJsonObject error = result.value(QStringLiteral("error")).toObject();
    QCOMPARE(error.value(QStringLiteral("name")).toString(), QStringLiteral("RequestRefused"));
    QCOMPARE(error.value(QStringLiteral("causes")).toArray().size(), 3);
    // What a change tells is the same.
    const QJsonObject change = outcome.Objects().at(outcome.Objects().size() - 2);
    QCOMPARE(change.value(QStringLiteral("value")).toObject(), error);
}

int main(int argc, char** argv)
{
    return RunSignalTest<TestCliMonitorVerb>(argc, argv);
}

#include "tst_climonitorverb.moc"
