#include <chrono>

#include <QtTest>

#include "integration/frames.h"
#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/watchedtester.h"

using Simulator::Exchange;
using std::chrono::milliseconds;

/// What brings a connected instrument back into its normal mode.
class TestRestarts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RequestAsksEverythingAgain();
    void RequestLeavesUpdateMode();
    void ReportOfAnotherModeNeedsNoRequest_data();
    void ReportOfAnotherModeNeedsNoRequest();
};

namespace
{

/// The exchanges from the change to normal mode on.
QVector<Exchange> RestartOf(const LineInstrument& instrument)
{
    const QVector<Exchange> exchanges = instrument.Record();
    const int first = RequestsOf(exchanges).indexOf(Frames::ChangeToNormalMode);
    return first < 0 ? QVector<Exchange>() : exchanges.mid(first);
}

void CompareRestart(const LineInstrument& instrument, const QByteArrayList& requests)
{
    QTRY_COMPARE_WITH_TIMEOUT(RequestsOf(RestartOf(instrument).mid(0, requests.size())), requests, Patience);
    const QVector<Exchange> exchanges = RestartOf(instrument);
    QVERIFY(exchanges.at(1).receivedAt - exchanges.at(0).receivedAt >= milliseconds(2000));
}

} // namespace

void TestRestarts::RequestAsksEverythingAgain()
{
    const LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    tester->RestartTester();
    CompareRestart(instrument, QByteArrayList{Frames::ChangeToNormalMode} + Frames::FirstRequests());
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("DeviceInformation").size(), 2, Patience);
    QCOMPARE(tester.Signalled("ErrorCode"), QByteArrayList());
}

void TestRestarts::RequestLeavesUpdateMode()
{
    LineInstrument instrument;
    instrument.SetMode(3);
    WatchedTester tester;
    tester->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(tester.EnteredStates(), QByteArrayList{"AWAIT UPDATE ACTION"}, Patience);
    tester->RestartTester();
    CompareRestart(instrument, QByteArrayList{Frames::ChangeToNormalMode} + Frames::FirstRequests());
    QTRY_COMPARE_WITH_TIMEOUT(tester.EnteredStates(),
                              (QByteArrayList{"AWAIT UPDATE ACTION", "RESTARTING TESTER", "MONITORING"}),
                              Patience);
    QCOMPARE(tester.Signalled("TesterMode"), (QByteArrayList{"3", "0"}));
    QCOMPARE(tester.Signalled("ErrorCode"), QByteArrayList());
}

void TestRestarts::ReportOfAnotherModeNeedsNoRequest_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("calibration") << 1;
    QTest::newRow("mode 2") << 2;
}

void TestRestarts::ReportOfAnotherModeNeedsNoRequest()
{
    QFETCH(const int, mode);
    LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    instrument.SetMode(mode);
    // The status behind the restart tells that the mode has been left.
    CompareRestart(instrument,
                   QByteArrayList{Frames::ChangeToNormalMode, Frames::ReadStatus} + Frames::FirstRequests());
    QTRY_COMPARE_WITH_TIMEOUT(tester.EnteredStates(),
                              (QByteArrayList{"MONITORING", "RESTARTING TESTER", "MONITORING"}), Patience);
    QCOMPARE(tester.Signalled("TesterMode"), (QByteArrayList{QByteArray::number(mode), "0"}));
    QCOMPARE(tester.Signalled("ErrorCode"), QByteArrayList());
}

QTEST_GUILESS_MAIN(TestRestarts)
#include "tst_restarts.moc"
