#include "integration/rcdmeasuring.h"

using Vesmar::Error;
using Vesmar::FunctionState;

class TestRcdLostLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void IsNoticedOnlyAfterTheTest();
};

void TestRcdLostLink::IsNoticedOnlyAfterTheTest()
{
    RcdMeasuring rcd(WithEndlessRcd());
    rcd.Start(RcdKinds::IaTa1());
    QTRY_COMPARE_WITH_TIMEOUT(rcd.tester->MeasurementFunctionStatus(), FunctionState::Running, Patience);
    rcd.instrument.Unplug();
    rcd.AwaitEnd();
    QCOMPARE(rcd.tester->ErrorCode(), Error::StartFailed); // Started again, in vain.
    QCOMPARE(rcd.CountSent(Frames::StartMeasurement), 3);
    QVERIFY(!rcd.tester->IsMeasurementRunning());
    QVERIFY(!rcd.tester.EnteredStates().contains(Trace::Recovery));
    QVERIFY(rcd.tester->GetIsMeasurementModeActive());

    rcd.tester->SetIsMeasurementModeActive(false);
    QTRY_COMPARE_WITH_TIMEOUT(rcd.tester->ErrorCode(), Error::CommunicationRecovery, Patience);
    rcd.instrument.Plug();
    rcd.Leave(); // It still runs at the instrument: monitoring finds and stops it.
    QCOMPARE(rcd.tester->ErrorCode(), Error::NoErrors);
    QCOMPARE(rcd.tester->TesterMode(), Vesmar::OperationMode::Normal);
    QVERIFY(rcd.CountSent(Frames::StopMeasurement) > 0);
}

QTEST_GUILESS_MAIN(TestRcdLostLink)
#include "tst_rcdlostlink.moc"
