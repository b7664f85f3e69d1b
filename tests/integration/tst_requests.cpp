#include <chrono>

#include "integration/bench.h"
#include "support/scriptedpeer.h"

using Simulator::Exchange;
using std::chrono::milliseconds;

namespace
{

const QByteArray SetCurrentDate = Wire::Bytes("72240307140509ab99");     ///< 2024-03-07 14:05:09.
const QByteArray SetImpossibleDate = Wire::Bytes("72a003071405092a4b");  ///< 2100 has no place in two digits.
const QByteArray SetCalibrationDate = Wire::Bytes("74230519000000c875"); ///< 2023-05-19.

const QDateTime CurrentDate(QDate(2024, 3, 7), QTime(14, 5, 9));
const QDateTime CalibrationDate(QDate(2023, 5, 19), QTime(16, 30, 45));

constexpr milliseconds Step{100};
constexpr milliseconds RestartPause{2000};

/// A peer that accepts the calibration mode, but no calibration date.
QByteArray RefuseCalibrationDate(const QByteArray& request, bool* isInCalibrationMode)
{
    if (request.at(0) == 't') {
        return Wire::Refusal;
    }
    if (request.at(0) == 'x') {
        *isInCalibrationMode = request == Wire::ChangeToCalibrationMode;
    }
    return Wire::AnswerTo(request, *isInCalibrationMode ? Wire::CalibrationModeStatus : Wire::IdleStatus);
}

/// The exchanges from the change to normal mode on.
QVector<Exchange> RestartOf(const LineInstrument& instrument)
{
    const QVector<Exchange> exchanges = instrument.Record();
    const int first = RequestsOf(exchanges).indexOf(Wire::ChangeToNormalMode);
    return first < 0 ? QVector<Exchange>() : exchanges.mid(first);
}

/// The pause is that behind the change of mode.
void CompareRestart(const LineInstrument& instrument, const QByteArrayList& requests, milliseconds pause)
{
    AWAIT_EQUAL(RequestsOf(RestartOf(instrument).mid(0, requests.size())), requests);
    const QVector<Exchange> exchanges = RestartOf(instrument);
    QVERIFY(exchanges.at(1).receivedAt - exchanges.at(0).receivedAt == pause + AnswerTime);
}

} // namespace

/// The requests of an application to a connected instrument, besides measurements.
class TestRequests : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void CurrentDateIsSet();
    void DateThatIsRefusedIsNotSentAgain();
    void CalibrationDateIsSetInCalibrationMode();
    void RefusedCalibrationDateEndsInARestart();
    void RetrievalsShareAStepInTheirOrder();
    void RetrievedClockHasMovedOn();
    void DatesAreSetBeforeTheyAreRead();
    void RefusedVersionIsNotAskedForAgainButTheDateIs();
    void RestartAsksEverythingAgain();
    void RestartLeavesUpdateMode();
    void ReportOfAnotherModeIsAnsweredByARestart_data();
    void ReportOfAnotherModeIsAnsweredByARestart();
};

void TestRequests::CurrentDateIsSet()
{
    Bench bench(WithClock({QDate(2019, 1, 1), QTime(0, 0)}));
    bench.Connect();
    bench.tester->ConfigureCurrentDateTime(CurrentDate);
    QCOMPARE(bench.tester.LastSignalled("CurrentDateTime"), QByteArray("2024-03-07 14:05:09"));

    AWAIT(bench.instrument.Sent().contains(SetCurrentDate));
    const QDateTime shown = bench.instrument.Date();
    QCOMPARE(shown.date(), CurrentDate.date());
    QCOMPARE(CurrentDate.time().secsTo(shown.time()), 0);
    QCOMPARE(bench.instrument.Sent().count(SetCurrentDate), 1);
    QCOMPARE(bench.tester.Errors(), QByteArrayList());
}

void TestRequests::DateThatIsRefusedIsNotSentAgain()
{
    Bench bench(WithClock({QDate(2019, 1, 1), QTime(0, 0)}));
    bench.Connect();
    bench.tester->ConfigureCurrentDateTime(QDateTime(QDate(2100, 3, 7), QTime(14, 5, 9)));
    bench.AwaitIdentity(2);

    const QByteArrayList expected{SetImpossibleDate, SetImpossibleDate,
                                  SetImpossibleDate, // This is one request.
                                  Wire::ReadStatus};
    AWAIT_EQUAL(bench.SentSince(SetImpossibleDate).mid(0, 8), expected + Wire::FirstRequests);
    QCOMPARE(bench.instrument.Sent().count(SetImpossibleDate), 3);
    AWAIT_EQUAL(bench.tester->CurrentDateTime().date(), QDate(2019, 1, 1));
    AWAIT_EQUAL(bench.tester.Errors().size(), 2); // The link is lost and found again.
    QCOMPARE(bench.tester.LastSignalled("ErrorCode"), QByteArray("15"));
}

void TestRequests::CalibrationDateIsSetInCalibrationMode()
{
    Bench bench;
    bench.Connect();
    bench.tester->ConfigureCalibrationDateTime(CalibrationDate);
    QCOMPARE(bench.tester.LastSignalled("CalibrationDateTime"), QByteArray("2023-05-19 16:30:45"));

    const QByteArrayList expected{Wire::ChangeToCalibrationMode, SetCalibrationDate, Wire::ChangeToNormalMode,
                                  Wire::ReadStatus};
    AWAIT_EQUAL(bench.SentSince(Wire::ChangeToCalibrationMode).mid(0, 4), expected);
    QCOMPARE(bench.instrument.CalibrationDate().date(), CalibrationDate.date());
    const QVector<Exchange> exchanges =
        bench.instrument.Record().mid(bench.instrument.Sent().indexOf(Wire::ChangeToCalibrationMode));
    QVERIFY(exchanges.at(1).receivedAt - exchanges.at(0).receivedAt == milliseconds(500) + AnswerTime);
    QVERIFY(exchanges.at(3).receivedAt - exchanges.at(2).receivedAt == RestartPause + Step + AnswerTime);
    QCOMPARE(bench.tester.Errors(), QByteArrayList());
    QCOMPARE(bench.tester.Signalled("TesterMode"), QByteArrayList());
}

void TestRequests::RefusedCalibrationDateEndsInARestart()
{
    bool isInCalibrationMode = false; // Only the thread of the peer uses it.
    ScriptedPeer peer;
    peer.Answer([&isInCalibrationMode](const QByteArray& request) {
        return RefuseCalibrationDate(request, &isInCalibrationMode);
    });
    WatchedTester tester;
    tester->Enable();
    AWAIT_EQUAL(tester.Signalled("CalibrationDateTime").size(), 1);
    tester->ConfigureCalibrationDateTime(CalibrationDate);

    const QByteArrayList expected{Wire::ChangeToCalibrationMode,
                                  SetCalibrationDate,
                                  SetCalibrationDate,
                                  SetCalibrationDate,
                                  Wire::ReadStatus,
                                  Wire::ChangeToNormalMode,
                                  Wire::ReadStatus};
    AWAIT_EQUAL(Since(Wire::ChangeToCalibrationMode, peer.RequestBytes()).mid(0, 11),
                expected + Wire::FirstRequests);
    AWAIT_EQUAL(tester.Signalled("TesterMode"), (QByteArrayList{"1", "0"}));
    AWAIT_EQUAL(tester.Errors().size(), 2); // The link is lost and found again.
    QCOMPARE(tester.LastSignalled("ErrorCode"), QByteArray("15"));
}

void TestRequests::RetrievalsShareAStepInTheirOrder()
{
    Bench bench;
    bench.Connect();
    bench.tester->RetrieveCalibrationDateTime();
    bench.tester->RetrieveCurrentDateTime();
    bench.tester->RetrieveDeviceInformation();
    bench.AwaitIdentity(2);

    const QByteArrayList expected{Wire::ReadVersion, Wire::ReadCurrentDate, Wire::ReadCalibrationDate,
                                  Wire::ReadStatus};
    AWAIT_EQUAL(Since(Wire::ReadVersion, bench.instrument.Sent().mid(4)).mid(0, 4), expected);
    QCOMPARE(bench.tester.Signalled("CalibrationDateTime").size(), 1);
}

void TestRequests::RetrievedClockHasMovedOn()
{
    Bench bench;
    bench.Connect();
    const QDateTime before = bench.tester->CurrentDateTime();
    AWAIT(bench.instrument.Date().time() > before.time().addSecs(1));
    bench.tester->RetrieveCurrentDateTime();
    AWAIT_EQUAL(bench.tester.Signalled("CurrentDateTime").size(), 2);
    QCOMPARE(bench.tester->CurrentDateTime(), before.addSecs(1));
}

void TestRequests::DatesAreSetBeforeTheyAreRead()
{
    Bench bench;
    bench.Connect();
    bench.tester->RetrieveCalibrationDateTime();
    bench.tester->ConfigureCalibrationDateTime(CalibrationDate);
    bench.tester->RetrieveCurrentDateTime();
    bench.tester->ConfigureCurrentDateTime(CurrentDate);

    const QByteArrayList expected{SetCurrentDate,        Wire::ChangeToCalibrationMode,
                                  SetCalibrationDate,    Wire::ChangeToNormalMode,
                                  Wire::ReadCurrentDate, Wire::ReadCalibrationDate};
    AWAIT_EQUAL(bench.SentSince(SetCurrentDate).mid(0, 6), expected);
    // The instrument keeps no time of day with this date.
    AWAIT_EQUAL(bench.tester.LastSignalled("CalibrationDateTime"), QByteArray("2023-05-19 00:00:00"));
}

void TestRequests::RefusedVersionIsNotAskedForAgainButTheDateIs()
{
    int versions = 0; // Only the thread of the peer uses it.
    ScriptedPeer peer;
    peer.Answer([&versions](const QByteArray& request) {
        versions += request == Wire::ReadVersion ? 1 : 0;
        const bool isRefused = request == Wire::ReadVersion && versions >= 2 && versions <= 4;
        return isRefused ? Wire::Refusal : Wire::AnswerTo(request);
    });
    WatchedTester tester;
    tester->Enable();
    AWAIT_EQUAL(tester.Signalled("CalibrationDateTime").size(), 1);
    QVERIFY(peer.WaitForRequests(5)); // The instrument is being monitored by now.
    tester->RetrieveCurrentDateTime();
    tester->RetrieveDeviceInformation();

    const QByteArrayList failed{Wire::ReadVersion, Wire::ReadVersion, Wire::ReadVersion, Wire::ReadStatus};
    const QByteArrayList served{Wire::ReadStatus, Wire::ReadCurrentDate, Wire::ReadStatus};
    const QByteArrayList expected = failed + Wire::FirstRequests + served;
    AWAIT_EQUAL(Since(Wire::ReadVersion, peer.RequestBytes().mid(4)).mid(0, expected.size()), expected);
}

void TestRequests::RestartAsksEverythingAgain()
{
    Bench bench;
    bench.Connect();
    bench.tester->RestartTester();
    CompareRestart(bench.instrument, QByteArrayList{Wire::ChangeToNormalMode} + Wire::FirstRequests,
                   RestartPause + 2 * Step);
    bench.AwaitIdentity(2);
    QCOMPARE(bench.tester.Errors(), QByteArrayList());
}

void TestRequests::RestartLeavesUpdateMode()
{
    Bench bench;
    bench.instrument.SetMode(3);
    bench.tester->Enable();
    AWAIT_EQUAL(bench.tester.EnteredStates(), QByteArrayList{Trace::Awaiting});
    bench.tester->RestartTester();
    CompareRestart(bench.instrument, QByteArrayList{Wire::ChangeToNormalMode} + Wire::FirstRequests,
                   RestartPause + 2 * Step);
    AWAIT_EQUAL(bench.tester.EnteredStates(),
                (QByteArrayList{Trace::Awaiting, Trace::Restarting, Trace::Monitoring}));
    QCOMPARE(bench.tester.Signalled("TesterMode"), (QByteArrayList{"3", "0"}));
    QCOMPARE(bench.tester.Errors(), QByteArrayList());
}

void TestRequests::ReportOfAnotherModeIsAnsweredByARestart_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("calibration") << 1;
    QTest::newRow("mode 2") << 2;
}

void TestRequests::ReportOfAnotherModeIsAnsweredByARestart()
{
    QFETCH(const int, mode);
    Bench bench;
    bench.Connect();
    bench.instrument.SetMode(mode);
    // The status behind the restart tells that the mode has been left.
    CompareRestart(bench.instrument,
                   QByteArrayList{Wire::ChangeToNormalMode, Wire::ReadStatus} + Wire::FirstRequests,
                   RestartPause);
    AWAIT_EQUAL(bench.tester.EnteredStates(),
                (QByteArrayList{Trace::Monitoring, Trace::Restarting, Trace::Monitoring}));
    QCOMPARE(bench.tester.Signalled("TesterMode"), (QByteArrayList{QByteArray::number(mode), "0"}));
    QCOMPARE(bench.tester.Errors(), QByteArrayList());
}

QTEST_GUILESS_MAIN(TestRequests)
#include "tst_requests.moc"
