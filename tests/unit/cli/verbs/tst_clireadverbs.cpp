#include <QElapsedTimer>
#include <QJsonArray>
#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "client/line/linelock.h"
#include "support/scriptedpeer.h"
#include "support/serialdevice.h"
#include "unit/cli/kit/signaltest.h"
#include "unit/cli/verbs/verbtest.h"

namespace
{

/// "PROPERTY VALUE" of every change, with the numbers of enumerators.
QStringList Changes(const Outcome& outcome)
{
    QStringList changes;
    for (const QJsonObject& object : outcome.Objects()) {
        if (object.value(QStringLiteral("event")) != QStringLiteral("change")) {
            continue;
        }
        const QJsonValue value = object.value(QStringLiteral("value"));
        const QString text = value.isObject() && value.toObject().contains(QStringLiteral("number"))
                                 ? QString::number(value.toObject().value(QStringLiteral("number")).toInt())
                                 : value.toVariant().toString();
        changes.append(object.value(QStringLiteral("property")).toString() + QLatin1Char(' ') + text);
    }
    return changes;
}

QStringList PictureOfAnInstrument()
{
    return {QStringLiteral("DeviceInformation "), QStringLiteral("TesterMode 0"),
            QStringLiteral("ErrorCode 15"), QStringLiteral("CalibrationDateTime 2024-02-15T00:00:00")};
}

/// Refuses the requests with this command from the first to the last of these times.
Instrument RefusingFor(char command, int first, int last, const Instrument& instrument = Answering())
{
    return [=, time = 0](const QByteArray& request) mutable {
        time += request.at(0) == command ? 1 : 0;
        const bool isRefused = request.at(0) == command && time >= first && time <= last;
        return isRefused ? Wire::Refusal : instrument(request);
    };
}

} // namespace

/// The verbs that only read from the instrument.
class TestCliReadVerbs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Ends_data();
    void Ends();
    void DeviceThatCannotBeOpened_data();
    void DeviceThatCannotBeOpened();
    void HeldLine();
    void InfoShowsWhatWasRead();
    void InfoShowsTextWithoutJson();
    void InfoWaitsUntilTheClocksAreRead_data();
    void InfoWaitsUntilTheClocksAreRead();
    void InfoSaysUpdateMode();
    void InfoTellsAFunctionThatDoesNotStop();
    void InfoExplainsARefusal();
    void InfoEndsQuietlyWithoutAReader();
    void MonitorShowsEveryChangeUntilASignal();
    void MonitorEndsAfterTheTimeGiven();
    void MonitorShowsTextWithoutJson();
    void MonitorShowsMainsReadings();
    void MonitorShowsALossOfTheLinkAndGoesOn();
    void MonitorPointsOutUpdateMode();
    void MonitorWithoutADevice();
    void MonitorExplainsARefusal();
};

void TestCliReadVerbs::Ends_data()
{
    AddEndColumns();
    AddEnd("info, silence", Silent(), "info --timeout 0.3", 2, "failed", "no-answer",
           "vesmar: The instrument did not answer within 0.3 s.");
    AddEnd("info, clocks refused", Refusing('T'), "info --timeout 3", 2, "failed", "incomplete",
           "its clocks could not be read within 3 s");
    AddEnd("info, signal", SignalAt('s', SIGTERM, Silent()), "info", 128 + SIGTERM, "interrupted", "signal",
           "");
    AddEnd("monitor, signal before the link is up", SignalAt('s', SIGINT, Silent()), "monitor", 128 + SIGINT,
           "interrupted", "signal", "");
}

void TestCliReadVerbs::Ends()
{
    Outcome ended;
    CheckEnd(&ended);
}

void TestCliReadVerbs::DeviceThatCannotBeOpened_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("kind");
    QTest::newRow("missing") << ENOENT << QStringLiteral("device-missing");
    QTest::newRow("no permission") << EACCES << QStringLiteral("no-permission");
    QTest::newRow("broken") << EIO << QStringLiteral("device-unusable");
}

/// The program ends at once: its time limit is longer than any test may last.
void TestCliReadVerbs::DeviceThatCannotBeOpened()
{
    QFETCH(int, error);
    FailSerialDeviceOpen(error);
    const Outcome outcome = RunVerb({"vesmar", "info", "--json", "--timeout=3600"});
    RedirectSerialDevice(QByteArray());
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.Objects().size(), 1);
    QTEST(outcome.Result("reason").toString(), "kind");
    QVERIFY(outcome.Result("error").isNull());
    QCOMPARE(outcome.Result("status").toInt(), 2);
    QCOMPARE(outcome.errors, "vesmar: " + outcome.Result("message").toString().toLocal8Bit() + '\n');
}

void TestCliReadVerbs::HeldLine()
{
    const ScriptedPeer peer;
    VesmarClient::LineLock lock;
    QVERIFY(!lock.Lock().isFailure());
    const Outcome outcome = RunVerb({"vesmar", "info", "--json", "--timeout=3600"});
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.Objects().size(), 1);
    QCOMPARE(outcome.Result("reason").toString(), QStringLiteral("device-held"));
    QCOMPARE(outcome.Result("status").toInt(), 2);
    QCOMPARE(outcome.errors, "vesmar: " + outcome.Result("message").toString().toLocal8Bit() + '\n');
    QVERIFY2(outcome.errors.contains(QByteArray::number(::getpid())), outcome.errors.constData());
    QVERIFY(peer.Requests().isEmpty());
}

void TestCliReadVerbs::InfoShowsWhatWasRead()
{
    const Outcome outcome = RunWith(Answering(), "info --json");
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.Objects().size(), 2);
    QCOMPARE(outcome.output.left(outcome.output.indexOf(R"("event":"info","time":)")),
             QByteArray(R"({"CalibrationDateTime":"2024-02-15T00:00:00",)"
                        R"("CurrentDateTime":"2024-03-07T14:05:09",)"
                        R"("DeviceInformation":{"BuildNumber":"2016","DeviceCode":"410","DeviceName":"PAT",)"
                        R"("RevisionCode":"02","SerialNumber":"204815","Version":"1.05",)"
                        R"("VersionCode":"03"},)"
                        R"("ErrorCode":{"causes":[],"meaning":"no error","name":"NoErrors",)"
                        R"("nextStep":"Nothing is to be done.","number":15},)"
                        R"("TesterMode":{"name":"Normal","number":0},)"));
    QCOMPARE(outcome.errors, QByteArray());
}

void TestCliReadVerbs::InfoShowsTextWithoutJson()
{
    const Outcome outcome = RunWith(Answering(), "info");
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.output.startsWith("Device name:      PAT\n"));
    QVERIFY(outcome.output.contains("Clock:            2024-03-07 14:05:09\n"));
}

void TestCliReadVerbs::InfoWaitsUntilTheClocksAreRead_data()
{
    QTest::addColumn<Instrument>("instrument");
    QTest::addColumn<QString>("clock");
    Answers initial; // the library then signals no change of the clock
    initial.currentDate = WithChecksum(Wire::Bytes("160101000000"));
    QTest::newRow("clock that reads as the initial value") << Answering(initial) << "2016-01-01T00:00:00";
    QTest::newRow("link lost before the clocks are read")
        << RefusingFor('R', 1, 3) << "2024-03-07T14:05:09"; // the first request and its two repetitions
    const Instrument restarting = [isNormal = false](const QByteArray& request) mutable {
        Answers answers;
        isNormal = isNormal || request.at(0) == 'x';
        answers.status = isNormal ? Wire::IdleStatus : Wire::Mode2Status;
        return answers.To(request);
    };
    QTest::newRow("restart out of another mode") << restarting << "2024-03-07T14:05:09";
}

void TestCliReadVerbs::InfoWaitsUntilTheClocksAreRead()
{
    QFETCH(const Instrument, instrument);
    const Outcome outcome = RunWith(instrument, "info --json");
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.First("CalibrationDateTime").toString(), QStringLiteral("2024-02-15T00:00:00"));
    QTEST(outcome.First("CurrentDateTime").toString(), "clock");
    QVERIFY(outcome.output.contains(R"("TesterMode":{"name":"Normal","number":0})"));
}

void TestCliReadVerbs::InfoSaysUpdateMode()
{
    const Outcome outcome = RunWith(InUpdateMode(), "info --json");
    QCOMPARE(outcome.status, 3);
    QCOMPARE(outcome.Objects().size(), 2);
    QVERIFY(outcome.First("CurrentDateTime").isNull());
    QVERIFY(outcome.First("CalibrationDateTime").isNull());
    QCOMPARE(outcome.Result("outcome").toString(), QStringLiteral("update-mode"));
    QCOMPARE(outcome.Result("reason").toString(), QStringLiteral("update-mode"));
    QCOMPARE(
        outcome.errors,
        QByteArray("vesmar: The instrument is in update mode (3) and waits for firmware; run vesmar update "
                   "IMAGE --confirmation FILE.\n"));
}

/// The library needs ten seconds to find out.
void TestCliReadVerbs::InfoTellsAFunctionThatDoesNotStop()
{
    Answers running;
    running.status = Wire::Status(9, 7);
    const Outcome outcome = RunWith(Answering(running), "info --json");
    QCOMPARE(outcome.status, 6);
    QCOMPARE(outcome.Result("reason").toString(), QStringLiteral("unattended"));
    QCOMPARE(outcome.CountOf("unattended"), 1);
    QCOMPARE(outcome.CountOf("info"), 1);
    QVERIFY2(outcome.errors.contains("It does not stop; run vesmar stop."), outcome.errors.constData());
}

void TestCliReadVerbs::InfoExplainsARefusal()
{
    const Outcome outcome = RunWith(Refusing('s'), "info --timeout 15");
    QCOMPARE(outcome.status, 2);
    QCOMPARE(
        outcome.errors,
        QByteArray(
            "vesmar: The instrument refuses every request. Switch it off and on again, and check that it is "
            "of the right kind.\n"
            "  Likely causes   the instrument is in a condition in which it takes no requests\n"
            "                  another program uses the same line\n"
            "                  the firmware and this library do not suit each other\n"
            "  Next step       End other programs that use the line, switch the instrument off and on, and "
            "compare its version (vesmar info) with the one that this library was made for.\n"));
}

void TestCliReadVerbs::InfoEndsQuietlyWithoutAReader()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::array<int, 2> ends{};
    QCOMPARE(::pipe2(ends.data(), O_CLOEXEC), 0);
    ::close(ends[0]);
    ScriptedPeer peer;
    peer.Answer(Answering());
    const Outcome outcome = RunVerb({"vesmar", "info", "--timeout=3600"}, ends[1]);
    ::close(ends[1]);
    QCOMPARE(outcome.status, 128 + SIGPIPE);
    QCOMPARE(outcome.errors, QByteArray());
}

void TestCliReadVerbs::MonitorShowsEveryChangeUntilASignal()
{
    const Instrument changing = [statuses = 0](const QByteArray& request) mutable {
        Answers answers;
        statuses += request.at(0) == 's' ? 1 : 0;
        answers.status = statuses >= 6 ? Wire::Status(0, 12, false, 3) : Wire::IdleStatus; // while monitoring
        return answers.To(request);
    };
    const Outcome outcome = RunWith(SignalAt('s', SIGINT, changing, 9), "monitor --json");
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.errors, QByteArray());
    const QStringList expected =
        QStringList{QStringLiteral("CurrentMeasurementType 0"), QStringLiteral("StartTestStatus 14")} +
        QStringList{QStringLiteral("CurrentDateTime 2024-03-07T14:05:09")} + PictureOfAnInstrument() +
        QStringList{QStringLiteral("ErrorCode 3"), QStringLiteral("StartTestStatus 12")};
    QCOMPARE(Changes(outcome), expected);
    for (const QJsonObject& object : outcome.Objects()) {
        const QString time = object.value(QStringLiteral("time")).toString();
        QVERIFY2(QDateTime::fromString(time, Qt::ISODateWithMs).isValid(), qPrintable(time));
    }
    QCOMPARE(outcome.Result("message").toString(), QStringLiteral("Monitored until signal 2."));
}

void TestCliReadVerbs::MonitorEndsAfterTheTimeGiven()
{
    QElapsedTimer timer;
    timer.start();
    const Outcome outcome = RunWith(Answering(), "monitor --json --for 0.5");
    QVERIFY(timer.elapsed() >= 500);
    QCOMPARE(outcome.status, 0);
    QVERIFY(Changes(outcome).contains(QStringLiteral("CalibrationDateTime 2024-02-15T00:00:00")));
}

void TestCliReadVerbs::MonitorShowsTextWithoutJson()
{
    const Outcome outcome = RunWith(Answering(), "monitor --for 0");
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.output.contains("  TesterMode                 Normal (0)\n"),
             outcome.output.constData());
}

void TestCliReadVerbs::MonitorShowsMainsReadings()
{
    Answers answers;
    answers.status = Wire::ReadyStatus;
    const Instrument measuring = [answers](const QByteArray& request) {
        // 230.5, 0.25 and 50 in little-endian single precision, three values unused.
        return request.at(0) == 'e' ? WithChecksum(Wire::Bytes("00806643"
                                                               "0000803E"
                                                               "00004842"
                                                               "000000000000000000000000"))
                                    : answers.To(request);
    };
    const Outcome outcome = RunWith(SignalAt('e', SIGTERM, measuring, 2), "monitor --json");
    QCOMPARE(outcome.status, 0);
    QVERIFY2(
        outcome.output.contains(
            R"("value":{"name":"Monitoring","number":0,"readings":{"ULN":230.5,"UNPE":0.25,"frequency":50}})"),
        outcome.output.constData());
}

void TestCliReadVerbs::MonitorShowsALossOfTheLinkAndGoesOn()
{
    const Instrument lost = RefusingFor('s', 6, 9); // a whole request, and the first check of the recovery
    const Outcome outcome = RunWith(SignalAt('s', SIGINT, lost, 30), "monitor --json");
    QCOMPARE(outcome.status, 0);
    const QStringList changes = Changes(outcome);
    const int loss = changes.indexOf(QStringLiteral("ErrorCode 103"));
    QVERIFY(loss > 0);
    const QStringList expected = QStringList{QStringLiteral("ErrorCode 15")} + PictureOfAnInstrument();
    QCOMPARE(changes.mid(loss + 1), expected);
}

void TestCliReadVerbs::MonitorPointsOutUpdateMode()
{
    const Outcome outcome = RunWith(SignalAt('s', SIGINT, InUpdateMode(), 4), "monitor --json");
    QCOMPARE(outcome.status, 0);
    QVERIFY(Changes(outcome).contains(QStringLiteral("TesterMode 3")));
    QCOMPARE(outcome.errors,
             QByteArray("vesmar: The instrument is in update mode (3) and waits for firmware; run "
                        "vesmar update IMAGE --confirmation FILE.\n"));
}

void TestCliReadVerbs::MonitorWithoutADevice()
{
    RedirectSerialDevice(QByteArray());
    const Outcome outcome = RunVerb({"vesmar", "monitor", "--json", "--timeout=3600"});
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.Objects().size(), 1);
    QCOMPARE(outcome.Result("reason").toString(), QStringLiteral("device-missing"));
}

/// The library needs ten seconds to find out.
void TestCliReadVerbs::MonitorExplainsARefusal()
{
    const Outcome outcome = RunWith(Refusing('s'), "monitor --json --timeout 15");
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.errors.count('\n'), 1);
    QCOMPARE(outcome.Result("reason").toString(), QStringLiteral("refused"));
    const QJsonObject error = outcome.Result("error").toObject();
    QCOMPARE(error.value(QStringLiteral("name")).toString(), QStringLiteral("RequestRefused"));
    QCOMPARE(error.value(QStringLiteral("causes")).toArray().size(), 3);
    // A change shows the same error.
    const QJsonObject change = outcome.Objects().at(outcome.Objects().size() - 2);
    QCOMPARE(change.value(QStringLiteral("value")).toObject(), error);
}

int main(int argc, char** argv)
{
    return RunSignalTest<TestCliReadVerbs>(argc, argv);
}

#include "tst_clireadverbs.moc"
