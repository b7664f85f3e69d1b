#include "integration/rcdmeasuring.h"

using Simulator::Scenario;
using Vesmar::Error;
using Vesmar::MeasurementState;

namespace
{

constexpr int Prepared = 4;

} // namespace

/// Aborts before a test is started.
class TestRcdMonitoringAborts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void PreparedTestStaysPrepared();
    void PreparationToComeServesIt();
    void PreparationUnderWayBeginsAnew();
    void IecPreparationIsWithdrawnAfterAnError();
};

void TestRcdMonitoringAborts::PreparedTestStaysPrepared()
{
    RcdMeasuring rcd;
    rcd.Prepare(*RcdKinds::UbRe().settings);
    rcd.AwaitWatch();
    rcd.tester->AbortMeasurement();
    const QString step = QStringLiteral("RUNING RCD MONITORING STATE is abort");
    QTRY_VERIFY_WITH_TIMEOUT(rcd.tester.CountTraced(step) > 2, Patience); // It stays pending.
    QTRY_COMPARE_WITH_TIMEOUT(rcd.FunctionState(), Prepared, Patience);
    QVERIFY(rcd.IsInState(MeasurementState::Idle));
    QCOMPARE(rcd.CountSent(Frames::StopMeasurement), 0);

    rcd.tester->StartMeasurement(); // Which withdraws it.
    rcd.AwaitEnd();
    QCOMPARE(rcd.tester->ErrorCode(), Error::NoErrors);
    QCOMPARE(rcd.tester->TestResults()->GetMeasurementType(), Vesmar::MeasurementType::RCD);
    rcd.Leave();
}

void TestRcdMonitoringAborts::PreparationToComeServesIt()
{
    const RcdKind kind = RcdKinds::UbRe();
    RcdMeasuring rcd;
    rcd.Prepare(*kind.settings);
    rcd.AwaitWatch();
    rcd.tester->AbortMeasurement();
    rcd.tester->PrepareMeasurement(*kind.settings);
    rcd.AwaitWatch(2);
    QCOMPARE(rcd.SentSince(kind.prepare),
             (QByteArrayList{kind.prepare, Frames::StopMeasurement, kind.prepare}));
    rcd.Leave();
}

void TestRcdMonitoringAborts::PreparationUnderWayBeginsAnew()
{
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(Scenario::StartTest, 13); // Not ready for 4 s.
    rcd.Prepare(*RcdKinds::UbRe().settings);
    QTRY_VERIFY_WITH_TIMEOUT(rcd.IsInState(MeasurementState::Preparing), Patience);
    rcd.tester->AbortMeasurement();
    QTRY_VERIFY_WITH_TIMEOUT(rcd.tester.HasTold("MeasurementStatus", {"-1", "1", "-1", "1"}), Patience);
    rcd.instrument.SetScenario(Scenario::None);
    rcd.AwaitWatch();
    QCOMPARE(rcd.tester.Signalled("ErrorCode"), QByteArrayList());
    rcd.Leave();
}

void TestRcdMonitoringAborts::IecPreparationIsWithdrawnAfterAnError()
{
    const RcdKind kind = RcdKinds::IecIaTa1();
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(Scenario::RcdOtherFunction);
    rcd.Run(kind);
    QCOMPARE(rcd.tester->ErrorCode(), Error::RCDFunctionMismatch);
    rcd.tester->PrepareMeasurement(*kind.settings);
    const QString pending = QStringLiteral("RUNING RCD MONITORING STATE 1 - status= true false -1");
    QTRY_VERIFY_WITH_TIMEOUT(rcd.tester.CountTraced(pending) > 0, Patience);
    rcd.tester->AbortMeasurement();
    QTRY_COMPARE_WITH_TIMEOUT(
        rcd.tester.CountTraced(QStringLiteral("RUNING RCD MONITORING STATE rcdiec no error")), 1, Patience);
    rcd.AwaitWithdrawal();
    QCOMPARE(rcd.tester->ErrorCode(), Error::RCDFunctionMismatch);
    rcd.Leave();
    QCOMPARE(rcd.tester->ErrorCode(), Error::NoErrors);
}

QTEST_GUILESS_MAIN(TestRcdMonitoringAborts)
#include "tst_rcdmonitoringaborts.moc"
