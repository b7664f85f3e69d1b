#include <atomic>
#include <cerrno>
#include <chrono>

#include <QElapsedTimer>
#include <QSet>

#include "integration/bench.h"
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

/// The requests of monitoring after the first ones: the status, again and again, and the readings
/// whenever the status says that there are new ones.
QByteArrayList ExpectedMonitoring(const QVector<Exchange>& exchanges)
{
    QByteArrayList expected;
    bool mustRead = false;
    for (const Exchange& exchange : exchanges) {
        expected.append(mustRead ? Wire::ReadMeasurement : Wire::ReadStatus);
        mustRead = !mustRead && HasNewMeasurement(exchange);
    }
    return expected;
}

/// The instrument's readings in the order in which it gave them.
QByteArrayList GivenReadings(const LineInstrument& instrument)
{
    QByteArrayList readings;
    for (const Exchange& exchange : instrument.Record()) {
        if (exchange.request == Wire::ReadMeasurement) {
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
    void ReadingsAreThoseOfTheInstrument();
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
    Bench bench(WithClock({QDate(2024, 3, 7), QTime(14, 5, 9)}));
    bench.tester->Enable();
    QVERIFY(bench.tester->IsEnabled());
    AWAIT(!bench.tester.Signalled("TestResults").isEmpty());

    QCOMPARE(bench.tester.Signalled("DeviceInformation"), QByteArrayList{"PAT 410 204815 1.05 03 02 2016"});
    QCOMPARE(bench.tester.Signalled("CurrentDateTime"),
             QByteArrayList{DateText(bench.instrument.Record().at(2).answer)});
    QCOMPARE(bench.tester->CurrentDateTime(), QDateTime(QDate(2024, 3, 7), QTime(14, 5, 9)));
    QCOMPARE(bench.tester.Signalled("CalibrationDateTime"), QByteArrayList{"2024-02-15 00:00:00"});
    QCOMPARE(bench.tester->CalibrationDateTime(), QDateTime(QDate(2024, 2, 15), QTime(0, 0)));
    QCOMPARE(bench.tester.Signalled("StartTestStatus"), QByteArrayList{"14"});
    QCOMPARE(bench.tester.Signalled("CurrentMeasurementType"), QByteArrayList{"0"});
    QVERIFY(GivenReadings(bench.instrument).contains(bench.tester.LastSignalled("TestResults")));
    QCOMPARE(bench.tester->TesterMode(), Vesmar::OperationMode::Normal);
    QCOMPARE(bench.tester->ErrorCode(), Vesmar::Error::NoErrors);
    QVERIFY(bench.tester.HasStayedOnItsThread());
}

void TestConnection::SignalsOnlyWhatHasChanged()
{
    Bench bench;
    bench.tester->Enable();
    AWAIT(bench.tester.Signalled("TestResults").size() >= 2);
    for (const char* unchanged :
         {"TesterMode", "ErrorCode", "MeasurementFunctionStatus", "TestSettings", "IsMeasurementRunning",
          "MeasurementStatus", "MeasurementTime", "OperationProgress", "OperationStatus"}) {
        QVERIFY2(bench.tester.Signalled(unchanged).isEmpty(), unchanged);
    }
    for (const char* once : {"DeviceInformation", "CurrentDateTime", "CalibrationDateTime", "StartTestStatus",
                             "CurrentMeasurementType"}) {
        QVERIFY2(bench.tester.Signalled(once).size() == 1, once);
    }
}

void TestConnection::AsksInTheFixedOrder()
{
    Bench bench;
    bench.tester->Enable();
    AWAIT(bench.tester.Signalled("TestResults").size() >= 2);

    const QVector<Exchange> exchanges = bench.instrument.Record();
    QCOMPARE(RequestsOf(exchanges).mid(0, 4), Wire::FirstRequests);
    QCOMPARE(RequestsOf(exchanges).mid(4), ExpectedMonitoring(exchanges.mid(4)));
}

void TestConnection::KeepsItsPauses()
{
    Bench bench;
    bench.tester->Enable();
    AWAIT(bench.instrument.Sent().size() >= 12);

    const QVector<Exchange> exchanges = bench.instrument.Record();
    QVERIFY(exchanges.at(3).receivedAt - exchanges.at(2).receivedAt == milliseconds(100) + AnswerTime);
    for (int index = 4; index < exchanges.size(); ++index) {
        const auto pause = exchanges.at(index).receivedAt - exchanges.at(index - 1).receivedAt;
        const bool isNextStep = exchanges.at(index).request == Wire::ReadStatus;
        QVERIFY(pause == (isNextStep ? milliseconds(100) : milliseconds(10)) + AnswerTime);
    }
}

void TestConnection::ReadingsAreThoseOfTheInstrument()
{
    Bench bench;
    bench.tester->Enable();
    AWAIT(Different(bench.tester.Signalled("TestResults")) >= 4);
    QVERIFY(IsInOrderWithin(bench.tester.Signalled("TestResults"), GivenReadings(bench.instrument)));
    QCOMPARE(bench.tester->TestResults()->GetMeasurementType(), MeasurementType::Monitoring);
    QVERIFY(bench.tester.HasStayedOnItsThread());
}

void TestConnection::ErrorOfTheInstrumentIsSignalled()
{
    Bench bench;
    bench.instrument.SetError(0);
    bench.tester->Enable();
    bench.AwaitErrors({"0"});
    bench.instrument.SetError(14);
    bench.AwaitErrors({"0", "14"});
    bench.instrument.SetError(15);
    bench.AwaitErrors({"0", "14", "15"});
}

void TestConnection::ResultOfTheStartTestIsSignalled()
{
    ScriptedPeer peer;
    peer.Answer([](const QByteArray& request) { return Wire::AnswerTo(request, Wire::Bytes("00f5babf")); });
    WatchedTester tester;
    tester->Enable();
    AWAIT_EQUAL(tester.Signalled("StartTestStatus"), (QByteArrayList{"5"}));
    peer.Answer([](const QByteArray& request) { return Wire::AnswerTo(request); });
    AWAIT_EQUAL(tester.Signalled("StartTestStatus"), (QByteArrayList{"5", "14"}));
    QCOMPARE(tester.Signalled("MeasurementFunctionStatus"), QByteArrayList());
}

void TestConnection::ForeignFunctionIsStoppedOnEveryStep()
{
    std::atomic<bool> hasEnded = false;
    ScriptedPeer peer;
    peer.Answer([&hasEnded](const QByteArray& request) {
        return Wire::AnswerTo(request, hasEnded ? Wire::IdleStatus : Wire::Bytes("05f70d60"));
    });
    WatchedTester tester;
    tester->Enable();
    AWAIT_EQUAL(tester.Signalled("CurrentMeasurementType"), QByteArrayList{"5"});
    QVERIFY(peer.WaitForRequests(10));
    const QByteArrayList expected{Wire::ReadStatus,      Wire::StopMeasurement, Wire::ReadStatus,
                                  Wire::StopMeasurement, Wire::ReadStatus,      Wire::StopMeasurement};
    QCOMPARE(peer.RequestBytes().mid(0, 10), Wire::FirstRequests + expected);

    hasEnded = true;
    AWAIT_EQUAL(tester.Signalled("CurrentMeasurementType"), (QByteArrayList{"5", "0"}));
    const int sentBefore = peer.Requests().size();
    QVERIFY(peer.WaitForRequests(sentBefore + 3));
    QVERIFY(!peer.RequestBytes().mid(sentBefore).contains(Wire::StopMeasurement));
    QCOMPARE(tester.Signalled("MeasurementFunctionStatus"), QByteArrayList{"7"});
    QCOMPARE(tester.Errors(), QByteArrayList());
}

void TestConnection::UpdateModeLeavesTheClocksUnread()
{
    Bench bench;
    bench.instrument.SetMode(3);
    bench.tester->Enable();
    AWAIT(bench.instrument.Sent().size() >= 8);

    const QByteArrayList expected{Wire::ReadStatus, Wire::ReadVersion, Wire::ReadStatus, Wire::ReadStatus,
                                  Wire::ReadStatus, Wire::ReadStatus,  Wire::ReadStatus, Wire::ReadStatus};
    QCOMPARE(bench.instrument.Sent().mid(0, 8), expected);
    QCOMPARE(bench.tester->TesterMode(), Vesmar::OperationMode::Update);
    QCOMPARE(bench.tester->CurrentDateTime(), QDateTime(QDate(2016, 1, 1), QTime(0, 0)));
    QVERIFY(bench.tester->CalibrationDateTime().isNull());
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
    Bench bench;
    bench.instrument.SetMode(mode);
    bench.tester->Enable();
    AWAIT_EQUAL(bench.tester.Signalled("CalibrationDateTime").size(), 1);

    // The status behind the restart tells that the mode has been left.
    const QByteArrayList expected{Wire::ReadStatus, Wire::ReadVersion, Wire::ChangeToNormalMode,
                                  Wire::ReadStatus};
    QCOMPARE(bench.instrument.Sent().mid(0, 8), expected + Wire::FirstRequests);
    const QVector<Exchange> exchanges = bench.instrument.Record();
    QVERIFY(exchanges.at(3).receivedAt - exchanges.at(2).receivedAt == milliseconds(2000) + AnswerTime);
    QCOMPARE(bench.tester.Signalled("TesterMode"), (QByteArrayList{QByteArray::number(mode), "0"}));
    QCOMPARE(bench.tester.Errors(), QByteArrayList());
}

void TestConnection::EnableTwiceIsEnableOnce()
{
    Bench bench;
    bench.tester->Enable();
    bench.Connect();
    QCOMPARE(RecordedSerialDevice().opens, 1);
    const QVector<Exchange> exchanges = bench.instrument.Record();
    QCOMPARE(RequestsOf(exchanges).mid(0, 4), Wire::FirstRequests);
    QCOMPARE(RequestsOf(exchanges).mid(4), ExpectedMonitoring(exchanges.mid(4)));
}

void TestConnection::DisableAndEnableAgain()
{
    Bench bench;
    for (int cycle = 1; cycle <= 3; ++cycle) {
        bench.tester->Enable();
        QVERIFY(bench.tester->IsEnabled());
        QCOMPARE(bench.tester->MeasurementStatus(), MeasurementState::Idle);
        AWAIT_EQUAL(bench.tester.Signalled("DeviceInformation").size(), cycle);
        AWAIT_EQUAL(bench.tester.Signalled("CalibrationDateTime").size(), 1);
        const QByteArrayList requests = bench.instrument.Sent();
        QCOMPARE(requests.count(Wire::ReadVersion), cycle);
        const int beginning = requests.lastIndexOf(Wire::ReadVersion) - 1;
        AWAIT_EQUAL(bench.instrument.Sent().mid(beginning, 4), Wire::FirstRequests);

        bench.tester->AbortMeasurement();
        QCOMPARE(bench.tester->MeasurementStatus(), MeasurementState::Stopped);
        bench.tester->Disable();
        QVERIFY(!bench.tester->IsEnabled());
        QCOMPARE(bench.tester->DeviceInformation()->SerialNumber, QStringLiteral("204815"));
        QCOMPARE(bench.tester->CalibrationDateTime(), QDateTime(QDate(2024, 2, 15), QTime(0, 0)));
        QCOMPARE(bench.tester->MeasurementStatus(), MeasurementState::Stopped);
    }
}

void TestConnection::DisableEndsASilentExchange()
{
    Bench bench;
    bench.Connect();
    bench.instrument.Unplug();
    AWAIT(!bench.instrument.SentSinceTheFirstFailure().isEmpty());

    QElapsedTimer timer;
    timer.start();
    bench.tester->Disable();
    QVERIFY2(timer.elapsed() <= 101, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(bench.tester->DeviceInformation()->SerialNumber, QStringLiteral("204815"));
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
    Bench bench;
    FailSerialDeviceOpen(openError);
    bench.tester->Enable();
    QVERIFY(bench.tester->IsEnabled());
    bench.AwaitErrors({"103", "100"});
    QCOMPARE(RecordedSerialDevice().opens, 1);
    bench.tester->Disable();

    bench.instrument.Attach();
    bench.Connect();
    QCOMPARE(bench.tester.Errors(), (QByteArrayList{"103", "100", "15"}));
    QCOMPARE(bench.instrument.Sent().mid(0, 5), QByteArrayList{Wire::ReadStatus} + Wire::FirstRequests);
}

void TestConnection::AnotherTesterAfterTheFirst()
{
    const LineInstrument instrument;
    {
        WatchedTester first;
        first->Enable();
        AWAIT(!first.Signalled("TestResults").isEmpty());
    }
    WatchedTester second;
    QVERIFY(!second->IsEnabled());
    QCOMPARE(second->DeviceInformation()->SerialNumber, QStringLiteral("000000"));
    QCOMPARE(second->CurrentMeasurementType(), MeasurementType::None);
    second->Enable();
    AWAIT_EQUAL(second.Signalled("CalibrationDateTime"), QByteArrayList{"2024-02-15 00:00:00"});
    QCOMPARE(second->DeviceInformation()->SerialNumber, QStringLiteral("204815"));
}

QTEST_GUILESS_MAIN(TestConnection)
#include "tst_connection.moc"
