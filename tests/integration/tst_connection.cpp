#include <atomic>
#include <cerrno>
#include <chrono>

#include <QElapsedTimer>
#include <QSet>
#include <QtTest>

#include "integration/frames.h"
#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/watchedtester.h"
#include "support/scriptedpeer.h"
#include "support/serialdevice.h"

using Simulator::Exchange;
using std::chrono::milliseconds;
using Vesmar::MeasurementState;
using Vesmar::MeasurementType;
using Vesmar::Tester;

namespace
{

bool HasNewMeasurement(const Exchange& statusExchange)
{
    return (statusExchange.answer.at(0) & 0x80) != 0;
}

/// What an idle instrument is asked after the first requests: its status, again and again, and its readings
/// whenever the status says that there are new ones.
QByteArrayList ExpectedMonitoring(const QVector<Exchange>& exchanges)
{
    QByteArrayList expected;
    bool mustRead = false;
    for (const Exchange& exchange : exchanges) {
        expected.append(mustRead ? Frames::ReadMeasurement : Frames::ReadStatus);
        mustRead = !mustRead && HasNewMeasurement(exchange);
    }
    return expected;
}

/// The instrument's readings in the order in which it gave them.
QByteArrayList GivenReadings(const LineInstrument& instrument)
{
    QByteArrayList readings;
    for (const Exchange& exchange : instrument.Record()) {
        if (exchange.request.toHex() == Frames::ReadMeasurement) {
            readings.append(ReadingsText(exchange.answer));
        }
    }
    return readings;
}

/// Whether the parts come in the order of the whole; one may come again, as a signal may.
bool IsInOrderWithin(const QByteArrayList& parts, const QByteArrayList& whole)
{
    int position = 0;
    for (const QByteArray& part : parts) {
        position = whole.indexOf(part, position);
        if (position < 0) {
            return false;
        }
    }
    return true;
}

int Different(const QByteArrayList& values)
{
    return QSet<QByteArray>(values.cbegin(), values.cend()).size();
}

} // namespace

class TestConnection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ShowsWhatTheInstrumentHas();
    void SignalsOnlyWhatHasChanged();
    void AsksInTheFixedOrder();
    void KeepsItsPauses();
    void ReadingsFollowTheInstrument();
    void ErrorOfTheInstrumentIsSignalled();
    void ResultOfTheStartTestIsSignalled();
    void ForeignFunctionIsStoppedOnEveryStep();
    void UpdateModeLeavesTheClocksUnread();
    void OtherModesAreLeftByARestart_data();
    void OtherModesAreLeftByARestart();
    void EnableTwiceIsEnableOnce();
    void DisableAndEnableAgain();
    void DisableEndsASilentExchange();
    void DeviceThatAppearsLater_data();
    void DeviceThatAppearsLater();
    void AnotherTesterAfterTheFirst();
};

void TestConnection::ShowsWhatTheInstrumentHas()
{
    const LineInstrument instrument(WithClock({QDate(2024, 3, 7), QTime(14, 5, 9)}));
    WatchedTester tester;
    tester->Enable();
    QVERIFY(tester->IsEnabled());
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);

    QCOMPARE(tester.Signalled("DeviceInformation"), QByteArrayList{"PAT 410 204815 1.05 03 02 2016"});
    QCOMPARE(tester.Signalled("CurrentDateTime"), QByteArrayList{DateText(instrument.Record().at(2).answer)});
    QVERIFY(tester->CurrentDateTime() >= QDateTime(QDate(2024, 3, 7), QTime(14, 5, 9)));
    QCOMPARE(tester.Signalled("CalibrationDateTime"), QByteArrayList{"2024-02-15 00:00:00"});
    QCOMPARE(tester->CalibrationDateTime(), QDateTime(QDate(2024, 2, 15), QTime(0, 0)));
    QCOMPARE(tester.Signalled("StartTestStatus"), QByteArrayList{"14"});
    QCOMPARE(tester.Signalled("CurrentMeasurementType"), QByteArrayList{"0"});
    QVERIFY(GivenReadings(instrument).contains(tester.LastSignalled("TestResults")));
    QCOMPARE(tester->TesterMode(), Vesmar::OperationMode::Normal);
    QCOMPARE(tester->ErrorCode(), Vesmar::Error::NoErrors);
    QVERIFY(tester.HasStayedOnItsThread());
}

void TestConnection::SignalsOnlyWhatHasChanged()
{
    const LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(tester.Signalled("TestResults").size() >= 2, Patience);
    for (const char* unchanged :
         {"TesterMode", "ErrorCode", "MeasurementFunctionStatus", "TestSettings", "IsMeasurementRunning",
          "MeasurementStatus", "MeasurementTime", "OperationProgress", "OperationStatus"}) {
        QVERIFY2(tester.Signalled(unchanged).isEmpty(), unchanged);
    }
    for (const char* once : {"DeviceInformation", "CurrentDateTime", "CalibrationDateTime", "StartTestStatus",
                             "CurrentMeasurementType"}) {
        QVERIFY2(tester.Signalled(once).size() == 1, once);
    }
}

void TestConnection::AsksInTheFixedOrder()
{
    const LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(tester.Signalled("TestResults").size() >= 2, Patience);

    const QVector<Exchange> exchanges = instrument.Record();
    QCOMPARE(RequestsOf(exchanges).mid(0, 4), Frames::FirstRequests());
    QCOMPARE(RequestsOf(exchanges).mid(4), ExpectedMonitoring(exchanges.mid(4)));
}

void TestConnection::KeepsItsPauses()
{
    const LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(instrument.Sent().size() >= 12, Patience);

    const QVector<Exchange> exchanges = instrument.Record();
    QVERIFY(exchanges.at(3).receivedAt - exchanges.at(2).receivedAt >= milliseconds(100));
    for (int index = 4; index < exchanges.size(); ++index) {
        const auto pause = exchanges.at(index).receivedAt - exchanges.at(index - 1).receivedAt;
        const bool isNextStep = exchanges.at(index).request.toHex() == Frames::ReadStatus;
        QVERIFY(pause >= (isNextStep ? milliseconds(100) : milliseconds(10)));
    }
}

void TestConnection::ReadingsFollowTheInstrument()
{
    const LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(Different(tester.Signalled("TestResults")) >= 4, Patience);
    QVERIFY(IsInOrderWithin(tester.Signalled("TestResults"), GivenReadings(instrument)));
    QCOMPARE(tester->TestResults()->GetMeasurementType(), MeasurementType::Monitoring);
    QVERIFY(tester.HasStayedOnItsThread());
}

void TestConnection::ErrorOfTheInstrumentIsSignalled()
{
    LineInstrument instrument;
    WatchedTester tester;
    instrument.SetError(0);
    tester->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), (QByteArrayList{"0"}), Patience);
    instrument.SetError(14);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), (QByteArrayList{"0", "14"}), Patience);
    instrument.SetError(15);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), (QByteArrayList{"0", "14", "15"}), Patience);
}

void TestConnection::ResultOfTheStartTestIsSignalled()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Frames::Answer(request, "00f5babf"); });
    WatchedTester tester;
    tester->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("StartTestStatus"), (QByteArrayList{"5"}), Patience);
    peer.Answer([](const QByteArray& request) { return Frames::Answer(request); });
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("StartTestStatus"), (QByteArrayList{"5", "14"}), Patience);
    QCOMPARE(tester.Signalled("MeasurementFunctionStatus"), QByteArrayList());
}

void TestConnection::ForeignFunctionIsStoppedOnEveryStep()
{
    std::atomic<bool> hasEnded = false;
    ScriptedPeer peer;
    peer.Answer([&hasEnded](const QByteArray& request) {
        return Frames::Answer(request, hasEnded ? Frames::IdleStatus : "05f70d60");
    });
    WatchedTester tester;
    tester->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("CurrentMeasurementType"), QByteArrayList{"5"}, Patience);
    QVERIFY(peer.WaitForRequests(10));
    const QByteArrayList expected{Frames::ReadStatus,      Frames::StopMeasurement, Frames::ReadStatus,
                                  Frames::StopMeasurement, Frames::ReadStatus,      Frames::StopMeasurement};
    QCOMPARE(Frames::Hex(peer.RequestBytes()).mid(0, 10), Frames::FirstRequests() + expected);

    hasEnded = true;
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("CurrentMeasurementType"), (QByteArrayList{"5", "0"}),
                              Patience);
    const int sentBefore = peer.Requests().size();
    QVERIFY(peer.WaitForRequests(sentBefore + 3));
    QVERIFY(!Frames::Hex(peer.RequestBytes()).mid(sentBefore).contains(Frames::StopMeasurement));
    QCOMPARE(tester.Signalled("MeasurementFunctionStatus"), QByteArrayList{"7"});
    QCOMPARE(tester.Signalled("ErrorCode"), QByteArrayList());
}

void TestConnection::UpdateModeLeavesTheClocksUnread()
{
    LineInstrument instrument;
    instrument.SetMode(3);
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(instrument.Sent().size() >= 8, Patience);

    const QByteArrayList expected{Frames::ReadStatus, Frames::ReadVersion, Frames::ReadStatus,
                                  Frames::ReadStatus, Frames::ReadStatus,  Frames::ReadStatus,
                                  Frames::ReadStatus, Frames::ReadStatus};
    QCOMPARE(instrument.Sent().mid(0, 8), expected);
    QCOMPARE(tester->TesterMode(), Vesmar::OperationMode::Update);
    QCOMPARE(tester->CurrentDateTime(), QDateTime(QDate(2016, 1, 1), QTime(0, 0)));
    QVERIFY(tester->CalibrationDateTime().isNull());
}

void TestConnection::OtherModesAreLeftByARestart_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("calibration") << 1;
    QTest::newRow("mode 2") << 2;
}

void TestConnection::OtherModesAreLeftByARestart()
{
    QFETCH(int, mode);
    LineInstrument instrument;
    instrument.SetMode(mode);
    WatchedTester tester;
    tester->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("CalibrationDateTime").size(), 1, Patience);

    // The status behind the restart tells that the mode has been left.
    const QByteArrayList expected{Frames::ReadStatus, Frames::ReadVersion, Frames::ChangeToNormalMode,
                                  Frames::ReadStatus};
    QCOMPARE(instrument.Sent().mid(0, 8), expected + Frames::FirstRequests());
    const QVector<Exchange> exchanges = instrument.Record();
    QVERIFY(exchanges.at(3).receivedAt - exchanges.at(2).receivedAt >= milliseconds(2000));
    QCOMPARE(tester.Signalled("TesterMode"), (QByteArrayList{QByteArray::number(mode), "0"}));
    QCOMPARE(tester.Signalled("ErrorCode"), QByteArrayList());
}

void TestConnection::EnableTwiceIsEnableOnce()
{
    const LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    QCOMPARE(RecordedSerialDevice().opens, 1);
    const QVector<Exchange> exchanges = instrument.Record();
    QCOMPARE(RequestsOf(exchanges).mid(0, 4), Frames::FirstRequests());
    QCOMPARE(RequestsOf(exchanges).mid(4), ExpectedMonitoring(exchanges.mid(4)));
}

void TestConnection::DisableAndEnableAgain()
{
    const LineInstrument instrument;
    WatchedTester tester;
    for (int cycle = 1; cycle <= 3; ++cycle) {
        tester->Enable();
        QVERIFY(tester->IsEnabled());
        QCOMPARE(tester->MeasurementStatus(), MeasurementState::Idle);
        QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("DeviceInformation").size(), cycle, Patience);
        QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("CalibrationDateTime").size(), 1, Patience);
        const QByteArrayList requests = instrument.Sent();
        QCOMPARE(requests.count(Frames::ReadVersion), cycle);
        const int beginning = requests.lastIndexOf(Frames::ReadVersion) - 1;
        QTRY_COMPARE_WITH_TIMEOUT(instrument.Sent().mid(beginning, 4), Frames::FirstRequests(), Patience);

        tester->AbortMeasurement();
        QCOMPARE(tester->MeasurementStatus(), MeasurementState::Stopped);
        tester->Disable();
        QVERIFY(!tester->IsEnabled());
        QCOMPARE(tester->DeviceInformation()->SerialNumber, QStringLiteral("204815"));
        QCOMPARE(tester->CalibrationDateTime(), QDateTime(QDate(2024, 2, 15), QTime(0, 0)));
        QCOMPARE(tester->MeasurementStatus(), MeasurementState::Stopped);
    }
}

void TestConnection::DisableEndsASilentExchange()
{
    LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    instrument.Unplug();
    QTRY_VERIFY_WITH_TIMEOUT(!instrument.SentSinceTheFirstFailure().isEmpty(), Patience);

    QElapsedTimer timer;
    timer.start();
    tester->Disable();
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(tester->DeviceInformation()->SerialNumber, QStringLiteral("204815"));
}

void TestConnection::DeviceThatAppearsLater_data()
{
    QTest::addColumn<int>("openError");
    QTest::newRow("missing") << ENOENT;
    QTest::newRow("no permission") << EACCES;
}

void TestConnection::DeviceThatAppearsLater()
{
    QFETCH(int, openError);
    LineInstrument instrument;
    FailSerialDeviceOpen(openError);
    WatchedTester tester;
    tester->Enable();
    QVERIFY(tester->IsEnabled());
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), (QByteArrayList{"103", "100"}), Patience);
    QCOMPARE(RecordedSerialDevice().opens, 1);
    tester->Disable();

    instrument.Attach();
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    QCOMPARE(tester.Signalled("ErrorCode"), (QByteArrayList{"103", "100", "15"}));
    QCOMPARE(instrument.Sent().mid(0, 5), QByteArrayList{Frames::ReadStatus} + Frames::FirstRequests());
}

void TestConnection::AnotherTesterAfterTheFirst()
{
    const LineInstrument instrument;
    {
        WatchedTester first;
        first->Enable();
        QTRY_VERIFY_WITH_TIMEOUT(!first.Signalled("TestResults").isEmpty(), Patience);
    }
    WatchedTester second;
    QVERIFY(!second->IsEnabled());
    QCOMPARE(second->DeviceInformation()->SerialNumber, QStringLiteral("000000"));
    QCOMPARE(second->CurrentMeasurementType(), MeasurementType::None);
    second->Enable();
    QTRY_COMPARE_WITH_TIMEOUT(second.Signalled("CalibrationDateTime"), QByteArrayList{"2024-02-15 00:00:00"},
                              Patience);
    QCOMPARE(second->DeviceInformation()->SerialNumber, QStringLiteral("204815"));
}

QTEST_GUILESS_MAIN(TestConnection)
#include "tst_connection.moc"
