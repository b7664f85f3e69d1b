#include "decode/log/history.h"

#include <QtTest>

#include <algorithm>

#include "decode/log/summary.h"
#include "unit/decode/logfiles.h"

using Decode::AnswerKind;
using Decode::Event;
using Decode::Summary;

Q_DECLARE_METATYPE(Decode::AnswerKind)
Q_DECLARE_METATYPE(QList<Vesmar::Error>)

namespace
{

QByteArray Answered(const char* time, const char* answer = "00f5babf[4b]", const char* request = "73f44e")
{
    return QByteArray(time) + "  " + request + ' ' + answer;
}

QByteArray Silent(const char* time)
{
    return Answered(time, "[0b] No response");
}

QByteArray Entering(const char* state)
{
    return QByteArray("<<<                              ENTERING ") + state + " STATE ";
}

/// The first exchange without an answer; a note where there is none.
Event SilenceIn(const QList<Event>& events)
{
    const auto silence = std::find_if(events.cbegin(), events.cend(), [](const Event& event) {
        return event.answer.isEmpty() && !event.request.isEmpty();
    });
    return silence != events.cend() ? *silence : Event();
}

QList<Vesmar::Error> ErrorsOf(const QByteArrayList& lines)
{
    Summary summary;
    for (const Event& event : EventsOf(lines)) {
        summary.Add(event);
    }
    QList<Vesmar::Error> errors;
    for (const Decode::FoundError& found : summary.Errors()) {
        errors.append(found.error);
    }
    return errors;
}

/// Status requests of one link recovery, a second apart.
QByteArrayList Checks(int count, const char* answer)
{
    QByteArrayList lines;
    for (int i = 0; i < count; ++i) {
        const QByteArray time =
            QTime(12, 0, 0).addSecs(i).toString(QStringLiteral("HH:mm:ss.zzz")).toLatin1();
        lines.append(Answered(time.constData(), answer));
    }
    return lines;
}

} // namespace

class TestDecodeHistory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void BoundsTheTime_data();
    void BoundsTheTime();
    void CountsAttempts();
    void CountsAttemptsOfStates();
    void KnowsWhatTheLinkRepeats_data();
    void KnowsWhatTheLinkRepeats();
    void StopInATestGoesTheLinksWay();
    void DistinguishesCutFromSilent_data();
    void DistinguishesCutFromSilent();
    void KeepsTheOrderOfWhatItHoldsBack();
    void FindsContradictions_data();
    void FindsContradictions();
    void RemembersTheFunction();
    void NumbersSectors();
    void FindsFramesInWhatIsSentUnasked_data();
    void FindsFramesInWhatIsSentUnasked();
    void CountsLinks();
    void FindsMeasurements_data();
    void FindsMeasurements();
    void FindsErrors_data();
    void FindsErrors();
    void FindsErrorsOfMeasurements_data();
    void FindsErrorsOfMeasurements();
};

void TestDecodeHistory::BoundsTheTime_data()
{
    QTest::addColumn<QByteArrayList>("lines");
    QTest::addColumn<int>("within");
    const auto row = [](const char* name, const QByteArrayList& before, const char* time, int within) {
        QTest::newRow(name) << before + QByteArrayList{Answered(time)} << within;
    };
    constexpr int Unknown = -1;
    const QByteArray first = Answered("12:00:00.100");
    const QByteArray refused = Answered("12:00:00.100", "214334[3b] NACK");
    const QByteArray started = Answered("12:00:00.100", "06c660[3b] ACK", "53966a");
    row("first line", {}, "12:00:00.100", Unknown);
    row("after an exchange", {first}, "12:00:00.115", 6);
    row("after a failure", {refused}, "12:00:00.305", 6);
    row("after an acknowledge in words", {started, "12:00:00.101 Function run."}, "12:00:00.115", 5);
    row("after opening", {"12:00:00.100 Transciever::Open"}, "12:00:00.115", 16);
    row("after something unasked", {"12:00:00.100 ReadingBuffer: 0af73370"}, "12:00:00.115", 16);
    row("less than the pause", {first}, "12:00:00.101", 1);
    row("over midnight", {Answered("23:59:59.995")}, "00:00:00.015", 11);
    row("clock set back", {first}, "12:00:00.099", Unknown);
}

void TestDecodeHistory::BoundsTheTime()
{
    QFETCH(const QByteArrayList, lines);
    QTEST(EventsOf(lines).last().within.value_or(-1), "within");
}

void TestDecodeHistory::CountsAttempts()
{
    const auto events = EventsOf({Silent("12:00:05.000"), Answered("12:00:05.300", "00[1b] CRC Invalid"),
                                  Answered("12:00:05.600", "214334[3b] NACK"), Silent("12:00:10.000"),
                                  Answered("12:00:10.300"), Answered("12:00:10.400"), Silent("12:00:15.000"),
                                  Answered("12:00:15.300", "06c660[3b] ACK", "68aeed")});
    QList<int> attempts;
    QList<bool> areGivenUp;
    for (const Event& event : events) {
        attempts.append(event.attempt);
        areGivenUp.append(event.IsGivenUp());
    }
    QCOMPARE(attempts, (QList<int>{1, 2, 3, 1, 2, 1, 1, 1}));
    QCOMPARE(areGivenUp, (QList<bool>{false, false, true, false, false, false, false, false}));
}

void TestDecodeHistory::CountsAttemptsOfStates()
{
    const auto events =
        EventsOf(QByteArrayList{Entering("COMMUNICATION RECOVERY")} + Checks(5, "[0b] No response") +
                 QByteArrayList{Entering("MONITORING")} + Checks(1, "[0b] No response"));
    QCOMPARE(events.at(5).attempt, 5);
    QVERIFY(!events.at(5).isRepeatedByLink);
    QVERIFY(!events.at(3).IsGivenUp());
    QCOMPARE(events.last().attempt, 1);
    QVERIFY(events.last().isRepeatedByLink);
}

void TestDecodeHistory::KnowsWhatTheLinkRepeats_data()
{
    QTest::addColumn<QByteArray>("state");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<bool>("isRepeatedByLink");
    const auto row = [](const char* name, const QByteArray& state, const char* request,
                        bool isRepeatedByLink) {
        QTest::newRow(name) << state << QByteArray(request) << isRepeatedByLink;
    };
    const QByteArray recovery = Entering("COMMUNICATION RECOVERY");
    const QByteArray test = Entering("RCD IEC IaTa MEASUREMENT");
    row("status in recovery", recovery, "73f44e", false);
    row("change of the mode in recovery", recovery, "7800f081", true);
    row("status in a test", test, "73f44e", false);
    row("prepare in a test", test, "500b0080c000000000103d", false);
    row("start in a test", test, "53966a", false);
    row("check in a test", test, "65033c", false);
    row("stop in a test", test, "68aeed", true);
    row("status elsewhere", Entering("MONITORING"), "73f44e", true);
    row("status in an unknown state", "", "73f44e", true);
}

void TestDecodeHistory::KnowsWhatTheLinkRepeats()
{
    QFETCH(const QByteArray, state);
    QFETCH(const QByteArray, request);
    const auto events = EventsOf({state, Answered("12:00:00.000"),
                                  Answered("12:00:03.000", "[0b] No response", request.constData()),
                                  "12:00:03.500 Transciever::Close"});
    const Event silence = SilenceIn(events);
    QTEST(silence.isRepeatedByLink, "isRepeatedByLink");
    const bool isQuicker = silence.isRepeatedByLink && !state.isEmpty(); // than the 4 s of the link
    QCOMPARE(silence.outcome, isQuicker ? AnswerKind::Cut : AnswerKind::None);
}

void TestDecodeHistory::StopInATestGoesTheLinksWay()
{
    const char* const error = "0a47e8d7[4b]";
    const auto stop = [](const char* answer) { return Answered("12:00:00.000", answer, "68aeed"); };
    const auto events = EventsOf(
        {Entering("RCD MONITORING"), Answered("12:00:00.000", error), stop("214334[3b] NACK"),
         stop("06c660[3b] ACK"), Answered("12:00:00.100", "214334[3b] NACK"), Answered("12:00:00.200", error),
         Answered("12:00:00.300", error), Answered("12:00:00.400", error)});
    QList<bool> areRepeatedByLink;
    QList<int> errors;
    for (const Event& event : events.mid(1)) {
        areRepeatedByLink.append(event.isRepeatedByLink);
        errors.append(static_cast<int>(event.answerWords.error.value_or(Vesmar::Error::NoErrors)));
    }
    QCOMPARE(areRepeatedByLink, (QList<bool>{false, true, true, true, true, true, false}));
    QCOMPARE(errors, (QList<int>{524, 15, 15, 15, 4, 4, 524}));
}

void TestDecodeHistory::DistinguishesCutFromSilent_data()
{
    QTest::addColumn<QByteArrayList>("lines");
    QTest::addColumn<AnswerKind>("outcome");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char* name, const QByteArrayList& lines, AnswerKind outcome,
                        const char* problem) {
        QTest::newRow(name) << lines << outcome << QString::fromLatin1(problem);
    };
    const QByteArray close = "12:00:09.000 Transciever::Close";
    const QByteArray monitoring = Entering("MONITORING");
    const QByteArray first = Answered("12:00:00.000");
    const QByteArray quick = Silent("12:00:00.100");
    QByteArrayList banners{first, quick};
    for (int i = 0; i < 20; ++i) {
        banners.append(monitoring);
    }
    const char* const cut = "cut short by the closing of the link";
    row("closed", {first, quick, close}, AnswerKind::Cut, cut);
    row("closed, with a banner between", {first, quick, monitoring, close}, AnswerKind::Cut, cut);
    row("goes on", {first, quick, Answered("12:00:01.000"), close}, AnswerKind::None,
        "the line itself failed");
    row("goes on in words", banners, AnswerKind::None, "the line itself failed");
    row("end of the log", {first, quick}, AnswerKind::None, "or the link was closed");
    row("just quick enough", {first, Silent("12:00:00.509"), close}, AnswerKind::Cut, cut);
    row("a silence", {first, Silent("12:00:00.510"), close}, AnswerKind::None, "");
    row("no time is known", {"", quick, close}, AnswerKind::None, "");
    row("an unknown state after opening",
        {monitoring, "12:00:00.000 Transciever::Open: Serial port already opened.", Silent("12:00:01.000"),
         close},
        AnswerKind::None, "");
}

void TestDecodeHistory::DistinguishesCutFromSilent()
{
    QFETCH(const QByteArrayList, lines);
    QFETCH(const QString, problem);
    const Event event = SilenceIn(EventsOf(lines));
    QTEST(event.outcome, "outcome");
    QCOMPARE(event.problem.isEmpty(), problem.isEmpty());
    QVERIFY2(event.problem.contains(problem), qPrintable(event.problem));
}

void TestDecodeHistory::KeepsTheOrderOfWhatItHoldsBack()
{
    const auto events = EventsOf({Entering("MONITORING"), Answered("12:00:00.000"), Silent("12:00:03.000"),
                                  Entering("COMMUNICATION RECOVERY"), "ABORT MEASUREMENT",
                                  "12:00:03.100 Transciever::Close"});
    QList<qint64> lines;
    for (const Event& event : events) {
        lines.append(event.line);
    }
    QCOMPARE(lines, (QList<qint64>{1, 2, 3, 4, 5, 6}));
    QCOMPARE(events.at(2).outcome, AnswerKind::Cut); // quicker than the 4 s of that state
}

void TestDecodeHistory::FindsContradictions_data()
{
    QTest::addColumn<QString>("problem");
    QTest::newRow("214334[3b]") << "the log says nothing where the bytes mean \"NACK\"";
    QTest::newRow("06c660[3b] NACK") << "the log says \"NACK\" where the bytes mean \"ACK\"";
    QTest::newRow("00f5babf[4b] CRC Invalid") << "the log says \"CRC Invalid\" where the bytes mean nothing";
    QTest::newRow("00[1b] No response")
        << "the log says \"No response\" where the bytes mean \"CRC Invalid\"";
}

void TestDecodeHistory::FindsContradictions()
{
    QFETCH(const QString, problem);
    const QString found = EventsOf({Answered("12:00:00.000", QTest::currentDataTag())}).first().problem;
    QVERIFY2(found.contains(problem), qPrintable(found));
}

void TestDecodeHistory::RemembersTheFunction()
{
    const char* const values = "00002041000020410000c0400000c0400000c0400000c0403a27[26b]";
    const QByteArray measurement = Answered("12:00:00.000", values, "65033c");
    const auto events = EventsOf({measurement, Answered("12:00:00.100"), measurement,
                                  Answered("12:00:00.300", "a3529a32[4b]"), measurement});
    QCOMPARE(events.at(0).answerWords.text,
             QStringLiteral("values of an unknown function: 10, 10, 6, 6, 6, 6"));
    QCOMPARE(events.at(2).answerWords.text, QStringLiteral("Monitoring (0): ULN 10, UNPE 10, frequency 6"));
    QCOMPARE(events.at(4).answerWords.text, QStringLiteral("RISO (3): resistance 10, voltage 10, current 6"));
}

void TestDecodeHistory::NumbersSectors()
{
    const char* const sector = "4601027ebc";
    const QByteArray stored = Answered("12:00:00.000", "06c660[3b] ACK", sector);
    const QByteArray refused = Answered("12:00:00.000", "214334[3b] NACK", sector);
    const QByteArray begun = Answered("12:00:00.000", "00024220[4b]", "56333a");
    QStringList texts;
    for (const Event& event : EventsOf({stored, begun, stored, refused, stored, begun, stored})) {
        texts.append(event.requestWords.text);
    }
    const QString first = QStringLiteral("sector 1, 2 bytes");
    const QString second = QStringLiteral("sector 2, 2 bytes");
    QCOMPARE(texts, (QStringList{QStringLiteral("sector of an unknown number, 2 bytes"), QString(), first,
                                 second, second, QString(), first}));
}

/// How many frames each line completes, and how many bytes are left, where there are any.
void TestDecodeHistory::FindsFramesInWhatIsSentUnasked_data()
{
    QTest::addColumn<QByteArrayList>("bytes");
    QTest::addColumn<QList<int>>("frames");
    QTest::addColumn<QString>("problem");
    const QString none;
    QTest::newRow("in pieces") << QByteArrayList{"0af7", "", "3370"} << QList<int>{0, 1}
                               << "no whole frame yet, or a damaged one; bytes so far: 2";
    QTest::newRow("several at once")
        << QByteArrayList{"0af733700af73370050247410000000000000000000000000000000000000000ea2b"}
        << QList<int>{3} << none;
    QTest::newRow("nothing behind the end of a test")
        << QByteArrayList{"0af9fd9155", "0af73370"} << QList<int>{1, 1} << none;
}

void TestDecodeHistory::FindsFramesInWhatIsSentUnasked()
{
    QFETCH(const QByteArrayList, bytes);
    QByteArrayList lines;
    for (const QByteArray& piece : bytes) {
        lines.append("12:00:00.000 ReadingBuffer: " + piece);
    }
    const auto events = EventsOf(lines);
    QList<int> frames;
    for (const Event& event : events) {
        frames.append(event.frames.size());
    }
    QTEST(frames, "frames");
    QTEST(events.first().problem, "problem");
    QCOMPARE(events.last().problem, QString());
}

void TestDecodeHistory::CountsLinks()
{
    Summary summary;
    for (const Event& event : EventsOf({Answered("12:00:00.000"), "12:00:01.000 Transciever::Close",
                                        "12:00:01.100 Transciever::Close", "12:00:02.000 Transciever::Open",
                                        Answered("12:00:03.000"), Answered("12:00:03.100")})) {
        summary.Add(event);
    }
    QCOMPARE(summary.Links(), 2);
    QCOMPARE(summary.Exchanges(), 3);
}

/// The events with which a measurement begins (B) and ends (E).
void TestDecodeHistory::FindsMeasurements_data()
{
    QTest::addColumn<QByteArrayList>("lines");
    QTest::addColumn<QByteArray>("marks");
    const QByteArray started = Answered("12:00:00.000", "06c660[3b] ACK", "53966a");
    const QByteArray refused = Answered("12:00:00.000", "214334[3b] NACK", "53966a");
    const QByteArray prepared = Answered("12:00:00.000", "02f4f9c9[4b]");
    const QByteArray running = Answered("12:00:00.000", "02f79af9[4b]");
    const QByteArray completed = Answered("12:00:00.000", "02f23fa9[4b]");
    const QByteArray idle = Answered("12:00:00.000");
    QTest::newRow("started and completed")
        << QByteArrayList{completed, started, prepared, running, completed, idle} << QByteArray("-B--E-");
    QTest::newRow("not started") << QByteArrayList{refused, completed, idle} << QByteArray("---");
    QTest::newRow("no function any more") << QByteArrayList{started, idle} << QByteArray("BE");
    QTest::newRow("a result unasked")
        << QByteArrayList{Answered("12:00:00.000", "06c660[3b] ACK", "500b0000400000000000d1a4"), started,
                          "12:00:01.000 ReadingBuffer: 00000000d600f30000000000000000000000000000000000bd1a"}
        << QByteArray("-BE");
}

void TestDecodeHistory::FindsMeasurements()
{
    QFETCH(const QByteArrayList, lines);
    QByteArray marks;
    for (const Event& event : EventsOf(lines)) {
        marks += "-BE"[static_cast<int>(event.measurement)];
    }
    QTEST(marks, "marks");
}

void TestDecodeHistory::FindsErrors_data()
{
    using Vesmar::Error;
    QTest::addColumn<QByteArrayList>("lines");
    QTest::addColumn<QList<Error>>("errors");
    const auto row = [](const char* name, const QByteArrayList& lines, const QList<Error>& errors) {
        QTest::newRow(name) << lines << errors;
    };
    const QByteArrayList recovery{Entering("COMMUNICATION RECOVERY")};
    const QByteArrayList reset{Answered("12:00:40.000", "06c660[3b] ACK", "7800f081")};
    const char* const none = "[0b] No response";
    const char* const refused = "214334[3b] NACK";
    const char* const damaged = "00[1b] CRC Invalid";
    row("two failures", Checks(2, none), {});
    row("given up", Checks(3, none), {Error::CommunicationRecovery});
    row("answer that is not accepted", {Answered("12:00:00.000", "00f1f2adef[5b]")},
        {Error::CommunicationRecovery});
    row("recovery, ten silent checks", recovery + Checks(10, none), {Error::CommunicationRecovery});
    row("recovery, eleven silent checks", recovery + Checks(11, none),
        {Error::CommunicationRecovery, Error::NoResponse});
    row("recovery, eleven refusals", recovery + Checks(11, refused), {Error::CommunicationRecovery});
    row("recovery, refusals after a restart", recovery + Checks(11, refused) + reset + Checks(11, refused),
        {Error::CommunicationRecovery, Error::RequestRefused});
    row("recovery, damage after a restart", recovery + Checks(11, damaged) + reset + Checks(11, damaged),
        {Error::CommunicationRecovery, Error::InvalidResponse});
    const QByteArray sector = Answered("12:00:00.000", refused, "4601027ebc");
    row("sector given up", {sector, sector, sector}, {Error::UpdateInitializationFailed});
    const QByteArray confirmation = Answered("12:00:00.000", refused, "5aabcd6a50");
    row("confirmation given up", {confirmation, confirmation, confirmation},
        {Error::UpdateConfirmationFailed});
    row("update mode", {"UPDATE ERROR - Tester mode could not be changed."}, {Error::UpdateModeChangeFailed});
    row("image", {"UPDATE ERROR - Update data is invalid."}, {Error::UpdateDataInvalid});
    row("error of the instrument", {Answered("12:00:00.000", "a3529a32[4b]")}, {Error::DeviceError5});
    const QByteArray testError = Answered("12:00:00.000", "0a47e8d7[4b]");
    row("error of an RCD test", {Entering("RCD MONITORING"), testError}, {Error::RCDDeviceError4});
    row("error of a function that tests, elsewhere", {Entering("MONITORING"), testError},
        {Error::DeviceError4});
    row("error of a function that tests, state unknown", {testError}, {});
    row("error of an RCD test, unasked", {"12:00:00.000 ReadingBuffer: 0a072c9f"}, {Error::RCDDeviceError0});
}

void TestDecodeHistory::FindsErrors()
{
    QFETCH(const QByteArrayList, lines);
    QTEST(ErrorsOf(lines), "errors");
}

void TestDecodeHistory::FindsErrorsOfMeasurements_data()
{
    using Vesmar::Error;
    QTest::addColumn<QByteArrayList>("lines");
    QTest::addColumn<QList<Error>>("errors");
    const QByteArray inPreparation = Entering("PREPARING MEASUREMENT");
    const QByteArray inStart = Entering("STARTING MEASUREMENT");
    const QByteArray running = Entering("CONTINUOUS MEASUREMENT");
    const QByteArray aborting = Entering("ABORTING MEASUREMENT");
    const QByteArray prepare = Answered("12:00:00.000", "06c660[3b] ACK", "5002ff0001ffffffffb1e4");
    const QByteArray start = Answered("12:00:00.000", "06c660[3b] ACK", "53966a");
    const auto status = [](const char* frame) {
        return Answered("12:00:00.000", (QByteArray(frame) + "[4b]").constData());
    };
    const QByteArray noFunction = status("00fed10e");
    const QByteArray preparing = status("02f15c99");
    const QByteArray prepareError = status("02f31eb9");
    const QByteArray prepared = status("02f4f9c9");
    const QByteArray starting = status("02f5d8d9");
    const QByteArray startError = status("02f6bbe9");
    const QByteArray terminated = status("02f95418");
    const auto row = [](const char* name, const QByteArrayList& lines, const QList<Error>& errors) {
        QTest::newRow(name) << lines << errors;
    };
    row("preparation", {inPreparation, prepare, preparing, prepareError, aborting}, {Error::PrepareFailed});
    row("status read along with a prepare", {inPreparation, prepare, prepareError, aborting}, {});
    row("prepare still to be sent", {inPreparation, prepareError, prepare, preparing, aborting}, {});
    row("error after it was prepared", {inPreparation, prepared, prepareError, prepareError},
        {Error::PrepareFailed});
    row("handed over to another kind of test",
        {inPreparation, prepareError, Entering("RCD MEASUREMENT MODE"), aborting}, {});
    row("an error of the instrument before it",
        {inPreparation, prepare, preparing, status("0253f40c"), aborting}, {Error::DeviceError5});
    row("start test is no state", {inPreparation, status("00f37cdf"), aborting}, {});
    row("state that stays", {prepareError, inPreparation, noFunction, aborting}, {Error::PrepareFailed});
    row("state of another kind of test",
        {prepareError, "12:00:00.000 ReadingBuffer: 0af73370", inPreparation, noFunction, aborting}, {});
    row("start", {inStart, prepared, start, starting, startError, aborting}, {Error::StartFailed});
    row("start of what is not prepared", {inStart, prepareError, start, aborting}, {Error::StartFailed});
    row("falls back", {inStart, prepared, start, starting, prepared, aborting}, {Error::MeasurementFailed});
    row("aborted before it starts", {inStart, prepared, start, prepared, aborting}, {});
    row("started again", {inStart, starting, inStart, prepared, aborting}, {});
    row("run", {running, terminated, aborting}, {Error::MeasurementFailed});
    row("run of a single function", {Entering("SINGLE MEASUREMENT"), startError, aborting},
        {Error::MeasurementFailed});
    row("run of the high-voltage test",
        {Entering("HVTEST CONTINUOUS MEASUREMENT"), status("02f07d89"), aborting},
        {Error::MeasurementFailed});
    row("ended with a result", {running, status("82f9cc03"), aborting}, {});
    row("completed", {running, status("02f23fa9"), aborting}, {});
    row("aborted while it runs", {running, status("02f79af9"), aborting}, {});
    row("damaged status", {running, status("02f95419") + " CRC Invalid", aborting}, {});
    row("while it is stopped", {Entering("STOPPING MEASUREMENT"), terminated, aborting}, {});
    row("log from the middle", {terminated, prepareError, aborting}, {});
}

void TestDecodeHistory::FindsErrorsOfMeasurements()
{
    QFETCH(const QByteArrayList, lines);
    QTEST(ErrorsOf(lines), "errors");
}

QTEST_APPLESS_MAIN(TestDecodeHistory)
#include "tst_decodehistory.moc"
