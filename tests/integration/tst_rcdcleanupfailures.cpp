#include "integration/rcdmeasuring.h"

using Simulator::Scenario;
using Vesmar::Error;
using Vesmar::MeasurementState;

Q_DECLARE_METATYPE(Simulator::Scenario)

/// The clean-up. One instrument serves for all.
class TestRcdCleanUpFailures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void EndsWithItsError_data();
    void EndsWithItsError();
    void ObjectErrorIsPolledUntilItIsGone_data();
    void ObjectErrorIsPolledUntilItIsGone();

private:
    std::unique_ptr<RcdMeasuring> _rcd;
};

void TestRcdCleanUpFailures::initTestCase()
{
    _rcd = std::make_unique<RcdMeasuring>();
}

void TestRcdCleanUpFailures::cleanupTestCase()
{
    _rcd.reset();
}

void TestRcdCleanUpFailures::EndsWithItsError_data()
{
    AddRcdFailures();
    QTest::newRow("error when prepared") << RcdFailure{Scenario::RcdError, 7, 15, 15, 1, 0};
    // Nobody waits for its end.
    QTest::newRow("silent") << RcdFailure{Scenario::RcdSilent, 1, 15, 15, 1, 1};
    QTest::newRow("no result") << RcdFailure{Scenario::EndsWithoutResult, 1, 15, 15, 1, 1};
    QTest::newRow("error 5 in the run") << RcdFailure{Scenario::RcdErrorOnce, 5, 15, 15, 1, 1};
}

void TestRcdCleanUpFailures::EndsWithItsError()
{
    QFETCH(const RcdFailure, failure);
    _rcd->VerifyFailure(RcdKinds::CleanUp(), failure);
}

void TestRcdCleanUpFailures::ObjectErrorIsPolledUntilItIsGone_data()
{
    QTest::addColumn<Scenario>("scenario");
    QTest::newRow("found") << Scenario::RcdCheck;
    QTest::newRow("lost") << Scenario::RcdCheckLost;
}

void TestRcdCleanUpFailures::ObjectErrorIsPolledUntilItIsGone()
{
    QFETCH(const Scenario, scenario);
    constexpr int MoreThanTheBudget = 7;
    _rcd->instrument.SetFunction(0);
    _rcd->instrument.SetScenario(scenario, 3);
    _rcd->instrument.ClearRequests();
    _rcd->Start(RcdKinds::CleanUp());
    QTRY_VERIFY_WITH_TIMEOUT(_rcd->CountSent(Frames::ReadMeasurement) >= MoreThanTheBudget, Patience);
    QVERIFY(_rcd->IsInState(MeasurementState::Prepared));
    QCOMPARE(_rcd->tester->ErrorCode(), Error::NoErrors);
    _rcd->instrument.SetScenario(Scenario::RcdCheck, 0);
    _rcd->AwaitEnd();
    QCOMPARE(_rcd->tester->ErrorCode(), Error::NoErrors);
    QCOMPARE(_rcd->CountSent(Frames::StartMeasurement), 1);
}

QTEST_GUILESS_MAIN(TestRcdCleanUpFailures)
#include "tst_rcdcleanupfailures.moc"
