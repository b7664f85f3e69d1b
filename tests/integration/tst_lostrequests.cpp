#include <QtTest>

#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/watchedtester.h"

using Simulator::Fault;

class TestLostRequests : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LossOfTheLinkLeavesMeasurementMode();
    void MeasurementModeAskedForDuringALossIsForgotten();
    void RequestsForDataSurviveALoss();
};

void TestLostRequests::LossOfTheLinkLeavesMeasurementMode()
{
    LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    tester->SetIsMeasurementModeActive(true);
    QVERIFY(tester->GetIsMeasurementModeActive());
    instrument.SetFault(Fault::BadCrc);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), QByteArrayList{"103"}, Patience);
    QVERIFY(!tester->GetIsMeasurementModeActive());
    instrument.SetFault(Fault::None);
    const int readingsBefore = tester.Signalled("TestResults").size();
    QTRY_VERIFY_WITH_TIMEOUT(tester.Signalled("TestResults").size() > readingsBefore, Patience);
    QVERIFY(!tester->GetIsMeasurementModeActive());
}

void TestLostRequests::MeasurementModeAskedForDuringALossIsForgotten()
{
    LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    instrument.SetFault(Fault::BadCrc);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), QByteArrayList{"103"}, Patience);
    tester->SetIsMeasurementModeActive(true);
    QVERIFY(tester->GetIsMeasurementModeActive());
    instrument.SetFault(Fault::None);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("DeviceInformation").size(), 2, Patience);
    QVERIFY(!tester->GetIsMeasurementModeActive());
}

void TestLostRequests::RequestsForDataSurviveALoss()
{
    LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    instrument.SetFault(Fault::BadCrc);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), QByteArrayList{"103"}, Patience);
    tester->RetrieveDeviceInformation();
    instrument.SetFault(Fault::None);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("DeviceInformation").size(), 3, Patience);
}

QTEST_GUILESS_MAIN(TestLostRequests)
#include "tst_lostrequests.moc"
