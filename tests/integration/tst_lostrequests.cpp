#include <algorithm>

#include <QtTest>

#include <Vesmar/rlnsettings.h>

#include "integration/lineinstrument.h"
#include "integration/patience.h"
#include "integration/watchedtester.h"

using Simulator::Fault;

namespace
{

bool HasMeasurementRequest(const QByteArrayList& requests)
{
    return std::any_of(requests.cbegin(), requests.cend(), [](const QByteArray& request) {
        return request.startsWith("50") || request.startsWith("53"); // prepare, start
    });
}

} // namespace

class TestLostRequests : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LossOfTheLinkLeavesMeasurementMode();
    void MeasurementsAskedForDuringALossAreForgotten();
    void RequestsForDataSurviveALoss();
};

void TestLostRequests::LossOfTheLinkLeavesMeasurementMode()
{
    LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    tester->SetIsMeasurementModeActive(true);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("MeasurementStatus"), QByteArrayList{"1"}, Patience);

    instrument.SetFault(Fault::BadCrc);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), QByteArrayList{"103"}, Patience);
    QVERIFY(!tester->GetIsMeasurementModeActive());
    instrument.SetFault(Fault::None);
    const int readingsBefore = tester.Signalled("TestResults").size();
    QTRY_VERIFY_WITH_TIMEOUT(tester.Signalled("TestResults").size() > readingsBefore, Patience);
    QVERIFY(!tester->GetIsMeasurementModeActive());
}

void TestLostRequests::MeasurementsAskedForDuringALossAreForgotten()
{
    LineInstrument instrument;
    WatchedTester tester;
    tester->Enable();
    QTRY_VERIFY_WITH_TIMEOUT(!tester.Signalled("TestResults").isEmpty(), Patience);
    instrument.SetFault(Fault::BadCrc);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("ErrorCode"), QByteArrayList{"103"}, Patience);
    Vesmar::RLNSettings settings;
    tester->PrepareMeasurement(settings);
    tester->StartMeasurement();
    tester->SetIsMeasurementModeActive(true);

    instrument.SetFault(Fault::None);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("DeviceInformation").size(), 2, Patience);
    QVERIFY(!tester->GetIsMeasurementModeActive());
    tester->SetIsMeasurementModeActive(true);
    QTRY_COMPARE_WITH_TIMEOUT(tester.Signalled("MeasurementStatus"), QByteArrayList{"1"}, Patience);
    const int sentBefore = instrument.Sent().size();
    QTRY_VERIFY_WITH_TIMEOUT(instrument.Sent().size() >= sentBefore + 5, Patience);
    QVERIFY(!HasMeasurementRequest(instrument.Sent()));
    QCOMPARE(tester.Signalled("ErrorCode"), (QByteArrayList{"103", "15"}));
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
