#include "integration/rcdmeasuring.h"

using Simulator::Scenario;
using Vesmar::MeasurementState;

Q_DECLARE_METATYPE(Simulator::Scenario)

/// An Ub/Re test that does not become ready.
class TestRcdUnready : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void TestThatIsNotReadyIsWatchedOn_data();
    void TestThatIsNotReadyIsWatchedOn();
    void SilenceEndsTheWatch();
};

void TestRcdUnready::TestThatIsNotReadyIsWatchedOn_data()
{
    QTest::addColumn<Scenario>("scenario");
    QTest::newRow("prepare error") << Scenario::PrepareError;
    QTest::newRow("never prepared") << Scenario::NeverPrepared;
    QTest::newRow("check lost") << Scenario::RcdCheckLost;
}

void TestRcdUnready::TestThatIsNotReadyIsWatchedOn()
{
    QFETCH(const Scenario, scenario);
    constexpr int MoreThanTheBudget = 8;
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(scenario);
    rcd.Prepare(*RcdKinds::UbRe().settings);
    rcd.AwaitWatch();
    rcd.instrument.ClearRequests();
    const char* poll = scenario == Scenario::RcdCheckLost ? Frames::ReadMeasurement : Frames::ReadStatus;
    QTRY_VERIFY_WITH_TIMEOUT(rcd.CountSent(poll) > MoreThanTheBudget, Patience);
    QVERIFY(rcd.IsInState(MeasurementState::Idle));
    QCOMPARE(rcd.tester.Signalled("ErrorCode"), QByteArrayList());
    rcd.Leave();
}

void TestRcdUnready::SilenceEndsTheWatch()
{
    RcdMeasuring rcd;
    rcd.Prepare(*RcdKinds::UbRe().settings);
    rcd.AwaitWatch();
    rcd.instrument.Unplug();
    QTRY_COMPARE_WITH_TIMEOUT(rcd.tester.ErrorCode(), QByteArray("401"), Patience);
    rcd.AwaitWithdrawal();
    QCOMPARE(rcd.instrument.SentSinceTheFirstFailure(),
             (QByteArrayList{Frames::ReadStatus, Frames::ReadStatus, Frames::ReadStatus, Frames::ReadStatus,
                             Frames::ReadStatus, Frames::ReadStatus}));
}

QTEST_GUILESS_MAIN(TestRcdUnready)
#include "tst_rcdunready.moc"
