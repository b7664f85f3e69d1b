#include <chrono>

#include <QtTest>

#include "integration/frames.h"
#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/watchedtester.h"
#include "support/scriptedpeer.h"

using Simulator::Exchange;
using std::chrono::milliseconds;

namespace
{

constexpr char SetCurrentDate[] = "72240307140509ab99";     // 2024-03-07 14:05:09
constexpr char SetImpossibleDate[] = "72a003071405092a4b";  // the year 2100 has no place in two digits
constexpr char SetCalibrationDate[] = "74230519000000c875"; // 2023-05-19
constexpr char CalibrationModeStatus[] = "20fe3708";

const QDateTime CurrentDate(QDate(2024, 3, 7), QTime(14, 5, 9));
const QDateTime CalibrationDate(QDate(2023, 5, 19), QTime(16, 30, 45));

/// The requests from the first one of these on.
template <typename List>
QByteArrayList From(const char* first, const List& requests)
{
    const int index = requests.indexOf(first);
    return index < 0 ? QByteArrayList() : QByteArrayList(requests.mid(index));
}

/// Waits for the picture that every connection begins with.
bool HasPicture(const WatchedTester& tester)
{
    return QTest::qWaitFor([&tester] { return !tester.Signalled("TestResults").isEmpty(); }, Patience);
}

/// A peer that takes the calibration mode, but no calibration date.
QByteArray RefuseCalibrationDate(const QByteArray& request, bool* isInCalibrationMode)
{
    const QByteArray text = request.toHex();
    if (text.startsWith("74")) {
        return QByteArray::fromHex(Frames::Refusal);
    }
    if (text.startsWith("78")) {
        *isInCalibrationMode = text == Frames::ChangeToCalibrationMode;
    }
    return Frames::Answer(request, *isInCalibrationMode ? CalibrationModeStatus : Frames::IdleStatus);
}

} // namespace

class TestConfiguration : public QObject
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
};

void TestConfiguration::CurrentDateIsSet()
{
    const LineInstrument instrument(WithClock({QDate(2019, 1, 1), QTime(0, 0)}));
    WatchedTester tester;
    tester->Enable();
    QVERIFY(HasPicture(tester));
    tester->ConfigureCurrentDateTime(CurrentDate);
    QCOMPARE(tester.LastSignalled("CurrentDateTime"), QByteArray("2024-03-07 14:05:09"));

    QTRY_VERIFY_WITH_TIMEOUT(instrument.Sent().contains(SetCurrentDate), Patience);
    const QDateTime shown = instrument.Date();
    QCOMPARE(shown.date(), CurrentDate.date());
    QVERIFY(shown.time() >= CurrentDate.time());
    QVERIFY(shown.time() < CurrentDate.time().addSecs(Patience / 1000));
    QCOMPARE(instrument.Sent().count(SetCurrentDate), 1);
    QCOMPARE(tester.Signalled("ErrorCode"), QByteArrayList());
}

void TestConfiguration::DateThatIsRefusedIsNotSentAgain()
{
    const LineInstrument instrument(WithClock({QDate(2019, 1, 1), QTime(0, 0)}));
    WatchedTester tester;
    tester->Enable();
    QVERIFY(HasPicture(tester));
    tester->ConfigureCurrentDateTime(QDateTime(QDate(2100, 3, 7), QTime(14, 5, 9)));
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("DeviceInformation").size(), 2, Patience);

    const QByteArrayList expected{SetImpossibleDate, SetImpossibleDate, SetImpossibleDate, // one request
                                  Frames::ReadStatus};
    QTRY_COMPARE_WITH_TIMEOUT(From(SetImpossibleDate, instrument.Sent()).mid(0, 8),
                              expected + Frames::FirstRequests(), Patience);
    QCOMPARE(instrument.Sent().count(SetImpossibleDate), 3);
    QTRY_COMPARE_WITH_TIMEOUT(tester->CurrentDateTime().date(), QDate(2019, 1, 1), Patience);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode").size(), 2, Patience); // lost and found again
    QCOMPARE(tester.LastSignalled("ErrorCode"), QByteArray("15"));
}

void TestConfiguration::CalibrationDateIsSetInCalibrationMode()
{
    const LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QVERIFY(HasPicture(tester));
    tester->ConfigureCalibrationDateTime(CalibrationDate);
    QCOMPARE(tester.LastSignalled("CalibrationDateTime"), QByteArray("2023-05-19 16:30:45"));

    const QByteArrayList expected{Frames::ChangeToCalibrationMode, SetCalibrationDate,
                                  Frames::ChangeToNormalMode, Frames::ReadStatus};
    QTRY_COMPARE_WITH_TIMEOUT(From(Frames::ChangeToCalibrationMode, instrument.Sent()).mid(0, 4), expected,
                              Patience);
    QCOMPARE(instrument.CalibrationDate().date(), CalibrationDate.date());
    const QVector<Exchange> exchanges =
        instrument.Record().mid(instrument.Sent().indexOf(Frames::ChangeToCalibrationMode));
    QVERIFY(exchanges.at(1).receivedAt - exchanges.at(0).receivedAt >= milliseconds(500));
    QVERIFY(exchanges.at(3).receivedAt - exchanges.at(2).receivedAt >= milliseconds(2000));
    QCOMPARE(tester.Signalled("ErrorCode"), QByteArrayList());
    QCOMPARE(tester.Signalled("TesterMode"), QByteArrayList());
}

void TestConfiguration::RefusedCalibrationDateEndsInARestart()
{
    bool isInCalibrationMode = false; // for the peer's thread alone
    ScriptedPeer peer;
    peer.Answer([&isInCalibrationMode](const QByteArray& request) {
        return RefuseCalibrationDate(request, &isInCalibrationMode);
    });
    WatchedTester tester;
    tester->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("CalibrationDateTime").size(), 1, Patience);
    tester->ConfigureCalibrationDateTime(CalibrationDate);

    const QByteArrayList expected{Frames::ChangeToCalibrationMode,
                                  SetCalibrationDate,
                                  SetCalibrationDate,
                                  SetCalibrationDate,
                                  Frames::ReadStatus,
                                  Frames::ChangeToNormalMode,
                                  Frames::ReadStatus};
    QTRY_COMPARE_WITH_TIMEOUT(
        From(Frames::ChangeToCalibrationMode, Frames::Hex(peer.RequestBytes())).mid(0, 11),
        expected + Frames::FirstRequests(), Patience);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("TesterMode"), (QByteArrayList{"1", "0"}), Patience);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode").size(), 2, Patience); // lost and found again
    QCOMPARE(tester.LastSignalled("ErrorCode"), QByteArray("15"));
}

void TestConfiguration::RetrievalsShareAStepInTheirOrder()
{
    const LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QVERIFY(HasPicture(tester));
    tester->RetrieveCalibrationDateTime();
    tester->RetrieveCurrentDateTime();
    tester->RetrieveDeviceInformation();
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("DeviceInformation").size(), 2, Patience);

    const QByteArrayList expected{Frames::ReadVersion, Frames::ReadCurrentDate, Frames::ReadCalibrationDate,
                                  Frames::ReadStatus};
    QTRY_COMPARE_WITH_TIMEOUT(From(Frames::ReadVersion, instrument.Sent().mid(4)).mid(0, 4), expected,
                              Patience);
    QCOMPARE(tester.Signalled("CalibrationDateTime").size(), 1);
}

void TestConfiguration::RetrievedClockHasMovedOn()
{
    const LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QVERIFY(HasPicture(tester));
    const QDateTime before = tester->CurrentDateTime();
    QTRY_VERIFY_WITH_TIMEOUT(instrument.Date().time() > before.time().addSecs(1), Patience);
    tester->RetrieveCurrentDateTime();
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("CurrentDateTime").size(), 2, Patience);
    QVERIFY(tester->CurrentDateTime() > before);
}

void TestConfiguration::DatesAreSetBeforeTheyAreRead()
{
    const LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QVERIFY(HasPicture(tester));
    tester->RetrieveCalibrationDateTime();
    tester->ConfigureCalibrationDateTime(CalibrationDate);
    tester->RetrieveCurrentDateTime();
    tester->ConfigureCurrentDateTime(CurrentDate);

    const QByteArrayList expected{SetCurrentDate,          Frames::ChangeToCalibrationMode,
                                  SetCalibrationDate,      Frames::ChangeToNormalMode,
                                  Frames::ReadCurrentDate, Frames::ReadCalibrationDate};
    QTRY_COMPARE_WITH_TIMEOUT(From(SetCurrentDate, instrument.Sent()).mid(0, 6), expected, Patience);
    // The instrument keeps no time of day with this date.
    QTRY_COMPARE_WITH_TIMEOUT(tester.LastSignalled("CalibrationDateTime"), QByteArray("2023-05-19 00:00:00"),
                              Patience);
}

void TestConfiguration::RefusedVersionIsNotAskedForAgainButTheDateIs()
{
    int versions = 0; // for the peer's thread alone
    ScriptedPeer peer;
    peer.Answer([&versions](const QByteArray& request) {
        versions += request.toHex() == Frames::ReadVersion ? 1 : 0;
        const bool isRefused = request.toHex() == Frames::ReadVersion && versions >= 2 && versions <= 4;
        return isRefused ? QByteArray::fromHex(Frames::Refusal) : Frames::Answer(request);
    });
    WatchedTester tester;
    tester->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("CalibrationDateTime").size(), 1, Patience);
    QVERIFY(peer.WaitForRequests(5)); // In monitoring by now.
    tester->RetrieveCurrentDateTime();
    tester->RetrieveDeviceInformation();

    const QByteArrayList failed{Frames::ReadVersion, Frames::ReadVersion, Frames::ReadVersion,
                                Frames::ReadStatus};
    const QByteArrayList served{Frames::ReadStatus, Frames::ReadCurrentDate, Frames::ReadStatus};
    const QByteArrayList expected = failed + Frames::FirstRequests() + served;
    QTRY_COMPARE_WITH_TIMEOUT(
        From(Frames::ReadVersion, Frames::Hex(peer.RequestBytes()).mid(4)).mid(0, expected.size()), expected,
        Patience);
}

QTEST_GUILESS_MAIN(TestConfiguration)
#include "tst_configuration.moc"
