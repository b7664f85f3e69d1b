#include <QtTest>

#include <fcntl.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

#include "support/serialdevice.h"
#include "unit/cli/kit/signaltest.h"
#include "unit/cli/verbs/verbtest.h"

namespace
{

constexpr char LongTimeout[] = "--timeout=3600";

Outcome RunInfo()
{
    return RunVerb({"vesmar", "info", "--json", LongTimeout});
}

} // namespace

class TestCliInfoVerb : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ShowsWhatWasRead();
    void ShowsTextWithoutJson();
    void ClockThatReadsAsTheInitialValueIsShown();
    void LossOfTheLinkBeforeTheClocksAreRead();
    void RestartOutOfAnotherModeIsWaitedFor();
    void UpdateModeIsSaid();
    void DeviceThatCannotBeOpened_data();
    void DeviceThatCannotBeOpened();
    void SilentInstrument();
    void RefusalIsExplained();
    void ClocksThatAreRefused();
    void SignalEndsIt();
    void ReaderThatWentAwayEndsItQuietly();
};

void TestCliInfoVerb::ShowsWhatWasRead()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Answers().To(request); });
    const Outcome outcome = RunInfo();
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.Objects().size(), 2);
    QCOMPARE(outcome.output.left(outcome.output.indexOf(R"("event":"info","time":)")),
             QByteArray(R"({"CalibrationDateTime":"2023-01-02T00:00:00",)"
                        R"("CurrentDateTime":"2024-12-31T23:59:58",)"
                        R"("DeviceInformation":{"BuildNumber":"2016","DeviceCode":"410","DeviceName":"ABC",)"
                        R"("RevisionCode":"02","SerialNumber":"204815","Version":"1.05",)"
                        R"("VersionCode":"03"},)"
                        R"("ErrorCode":{"causes":[],"meaning":"no error","name":"NoErrors",)"
                        R"("nextStep":"Nothing is to be done.","number":15},)"
                        R"("TesterMode":{"name":"Normal","number":0},)"));
    QCOMPARE(outcome.errors, QByteArray());
}

void TestCliInfoVerb::ShowsTextWithoutJson()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Answers().To(request); });
    const Outcome outcome = RunVerb({"vesmar", "info", LongTimeout});
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.output.startsWith("Device name:      ABC\n"));
    QVERIFY(outcome.output.contains("Clock:            2024-12-31 23:59:58\n"));
}

/// The library then signals no change of the clock.
void TestCliInfoVerb::ClockThatReadsAsTheInitialValueIsShown()
{
    Answers answers;
    answers.currentDateTime = QByteArray::fromHex("160101000000");
    ScriptedPeer peer;
    peer.Answer([answers](const QByteArray& request) { return answers.To(request); });
    const Outcome outcome = RunInfo();
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.output.contains(R"("CalibrationDateTime":"2023-01-02T00:00:00")"));
    QVERIFY(outcome.output.contains(R"("CurrentDateTime":"2016-01-01T00:00:00")"));
}

void TestCliInfoVerb::LossOfTheLinkBeforeTheClocksAreRead()
{
    ScriptedPeer peer;
    std::atomic<int> refusals{3}; // the first request and its two repetitions
    peer.Answer([&refusals](const QByteArray& request) {
        const bool isRefused = request.at(0) == 'R' && refusals-- > 0;
        return isRefused ? Answers::Refusal() : Answers().To(request);
    });
    const Outcome outcome = RunInfo();
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.output.contains(R"("CalibrationDateTime":"2023-01-02T00:00:00")"));
    QVERIFY(outcome.output.contains(R"("CurrentDateTime":"2024-12-31T23:59:58")"));
}

void TestCliInfoVerb::RestartOutOfAnotherModeIsWaitedFor()
{
    ScriptedPeer peer;
    std::atomic<bool> isNormal{false};
    peer.Answer([&isNormal](const QByteArray& request) {
        Answers answers;
        if (request.at(0) == 'x') {
            isNormal = true;
        }
        if (!isNormal) {
            answers.status = QByteArray::fromHex("40FE");
        }
        return answers.To(request);
    });
    const Outcome outcome = RunInfo();
    QCOMPARE(outcome.status, 0);
    QVERIFY(outcome.output.contains(R"("CurrentDateTime":"2024-12-31T23:59:58")"));
    QVERIFY(outcome.output.contains(R"("TesterMode":{"name":"Normal","number":0})"));
}

void TestCliInfoVerb::UpdateModeIsSaid()
{
    Answers answers;
    answers.status = QByteArray::fromHex("60FE");
    ScriptedPeer peer;
    peer.Answer([answers](const QByteArray& request) { return answers.To(request); });
    const Outcome outcome = RunInfo();
    QCOMPARE(outcome.status, 3);
    const QList<QJsonObject> objects = outcome.Objects();
    QCOMPARE(objects.size(), 2);
    QVERIFY(objects.first().value(QStringLiteral("CurrentDateTime")).isNull());
    QVERIFY(objects.first().value(QStringLiteral("CalibrationDateTime")).isNull());
    QCOMPARE(objects.last().value(QStringLiteral("outcome")).toString(), QStringLiteral("update-mode"));
    QCOMPARE(objects.last().value(QStringLiteral("reason")).toString(), QStringLiteral("update-mode"));
    QCOMPARE(
        outcome.errors,
        QByteArray("vesmar: The instrument is in update mode (3) and waits for firmware; run vesmar update "
                   "IMAGE --confirmation FILE.\n"));
}

void TestCliInfoVerb::DeviceThatCannotBeOpened_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("kind");
    QTest::newRow("missing") << ENOENT << QStringLiteral("device-missing");
    QTest::newRow("no permission") << EACCES << QStringLiteral("no-permission");
    QTest::newRow("broken") << EIO << QStringLiteral("device-unusable");
}

/// At once: the time limit here is longer than any test may take.
void TestCliInfoVerb::DeviceThatCannotBeOpened()
{
    QFETCH(int, error);
    FailSerialDeviceOpen(error);
    const Outcome outcome = RunInfo();
    RedirectSerialDevice(QByteArray());
    QCOMPARE(outcome.status, 2);
    const QList<QJsonObject> objects = outcome.Objects();
    QCOMPARE(objects.size(), 1);
    QTEST(objects.last().value(QStringLiteral("reason")).toString(), "kind");
    QVERIFY(objects.last().value(QStringLiteral("error")).isNull());
    QCOMPARE(objects.first().value(QStringLiteral("status")).toInt(), 2);
    const QString message = objects.first().value(QStringLiteral("message")).toString();
    QCOMPARE(outcome.errors, "vesmar: " + message.toLocal8Bit() + '\n');
}

void TestCliInfoVerb::SilentInstrument()
{
    const ScriptedPeer peer;
    const Outcome outcome = RunVerb({"vesmar", "info", "--timeout", "0.3"});
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.output, QByteArray());
    QVERIFY2(outcome.errors.startsWith("vesmar: The instrument did not answer within 0.3 s."),
             outcome.errors.constData());
}

/// Once the library has found out, which takes it ten seconds.
void TestCliInfoVerb::RefusalIsExplained()
{
    ScriptedPeer peer;
    peer.AnswerAlways(Answers::Refusal());
    const Outcome outcome = RunVerb({"vesmar", "info", "--timeout", "15"});
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

void TestCliInfoVerb::ClocksThatAreRefused()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) {
        return request.at(0) == 'T' ? Answers::Refusal() : Answers().To(request);
    });
    const Outcome outcome = RunVerb({"vesmar", "info", "--timeout", "3"});
    QCOMPARE(outcome.status, 2);
    QVERIFY2(outcome.errors.contains("its clocks could not be read within 3 s"), outcome.errors.constData());
}

void TestCliInfoVerb::SignalEndsIt()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray&) {
        ::kill(::getpid(), SIGTERM);
        return QByteArray();
    });
    const Outcome outcome = RunInfo();
    QCOMPARE(outcome.status, 128 + SIGTERM);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(outcome.Objects().size(), 1);
    QCOMPARE(outcome.Objects().first().value(QStringLiteral("outcome")).toString(),
             QStringLiteral("interrupted"));
    QCOMPARE(RunVerb({"vesmar", "info", LongTimeout}).output, QByteArray());
}

void TestCliInfoVerb::ReaderThatWentAwayEndsItQuietly()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::array<int, 2> ends{};
    QCOMPARE(::pipe2(ends.data(), O_CLOEXEC), 0);
    ::close(ends[0]);
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Answers().To(request); });
    const Outcome outcome = RunVerb({"vesmar", "info", LongTimeout}, ends[1]);
    ::close(ends[1]);
    QCOMPARE(outcome.status, 128 + SIGPIPE);
    QCOMPARE(outcome.errors, QByteArray());
}

int main(int argc, char** argv)
{
    return RunSignalTest<TestCliInfoVerb>(argc, argv);
}

#include "tst_cliinfoverb.moc"
