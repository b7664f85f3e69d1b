#include <utility>

#include "integration/rcdmeasuring.h"

using Simulator::Scenario;
using Vesmar::Error;
using Vesmar::MeasurementState;

Q_DECLARE_METATYPE(Simulator::Scenario)

/// The Ub/Re test that is prepared before it is started.
class TestRcdWatching : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ErrorEndsThePreparation_data();
    void ErrorEndsThePreparation();
    void FailedStartTestEndsThePreparation();
    void CheckObjectErrorsAreReportedAsTheyCome();
    void NextPreparationStopsWhatHasFailed();
    void NextPreparationReplacesTheWatchedOne();
};

void TestRcdWatching::ErrorEndsThePreparation_data()
{
    QTest::addColumn<Scenario>("scenario");
    QTest::addColumn<QByteArray>("error");
    QTest::addColumn<int>("prepares");
    QTest::newRow("refused") << Scenario::RefusesPrepare << QByteArray("200") << 3;
    QTest::newRow("other function") << Scenario::RcdOtherFunction << QByteArray("398") << 1;
}

void TestRcdWatching::ErrorEndsThePreparation()
{
    QFETCH(const Scenario, scenario);
    QFETCH(const QByteArray, error);
    QFETCH(const int, prepares);
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(scenario);
    rcd.Prepare(*RcdKinds::UbRe().settings);
    QTRY_COMPARE_WITH_TIMEOUT(rcd.tester.ErrorCode(), error, Patience);
    rcd.AwaitWithdrawal();
    QCOMPARE(rcd.CountSent(RcdKinds::UbRe().prepare), prepares);
}

void TestRcdWatching::FailedStartTestEndsThePreparation()
{
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(Scenario::StartTest, 13);
    rcd.Prepare(*RcdKinds::UbRe().settings);
    QTRY_COMPARE_WITH_TIMEOUT(rcd.tester.ErrorCode(), QByteArray("400"), Patience);
    rcd.AwaitWithdrawal();
    QCOMPARE(rcd.tester->StartTestStatus(), Vesmar::StartTestResult::Unknown);
    QCOMPARE(rcd.CountSent(RcdKinds::UbRe().prepare), 0);
}

void TestRcdWatching::CheckObjectErrorsAreReportedAsTheyCome()
{
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(Scenario::RcdCheck, 1);
    rcd.Prepare(*RcdKinds::UbRe().settings);
    const std::pair<int, const char*> errors[] = {
        {1, "500"}, {2, "501"},   {3, "502"}, {4, "503"},  {5, "500"}, {7, "504"},
        {8, "505"}, {255, "500"}, {9, "506"}, {10, "507"}, {6, "500"}, {0, "15"},
    };
    for (const auto& [code, error] : errors) {
        rcd.instrument.SetScenario(Scenario::RcdCheck, code);
        QTRY_COMPARE_WITH_TIMEOUT(rcd.tester.ErrorCode(), QByteArray(error), Patience);
        QVERIFY(rcd.IsInState(MeasurementState::Idle)); // It may still get better.
    }
    rcd.Leave();
}

void TestRcdWatching::NextPreparationStopsWhatHasFailed()
{
    RcdMeasuring rcd;
    rcd.instrument.SetScenario(Scenario::RcdError, 3);
    rcd.Prepare(*RcdKinds::UbRe().settings);
    QTRY_COMPARE_WITH_TIMEOUT(rcd.tester.ErrorCode(), QByteArray("523"), Patience);
    rcd.AwaitWithdrawal();
    rcd.instrument.SetScenario(Scenario::None);
    rcd.Prepare(*RcdKinds::UbRe().settings);
    rcd.AwaitWatch(2);
    QCOMPARE(rcd.SentSince(Frames::StopMeasurement),
             (QByteArrayList{Frames::StopMeasurement, RcdKinds::UbRe().prepare}));
    QCOMPARE(rcd.tester->ErrorCode(), Error::NoErrors);
}

void TestRcdWatching::NextPreparationReplacesTheWatchedOne()
{
    RcdMeasuring rcd;
    rcd.Prepare(*RcdKinds::UbRe().settings);
    rcd.AwaitWatch();
    rcd.tester->PrepareMeasurement(*RcdKinds::UbRe().settings);
    QTRY_VERIFY_WITH_TIMEOUT(
        rcd.tester.HasTold("MeasurementStatus", {"-1", "1", "2", "0", "-1", "1", "2", "0"}), Patience);
    QCOMPARE(rcd.CountSent(RcdKinds::UbRe().prepare), 2);
    QCOMPARE(rcd.CountSent(Frames::StopMeasurement), 0);
    QCOMPARE(rcd.tester.Signalled("ErrorCode"), QByteArrayList());
}

QTEST_GUILESS_MAIN(TestRcdWatching)
#include "tst_rcdwatching.moc"
