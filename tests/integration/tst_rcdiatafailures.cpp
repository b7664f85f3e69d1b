#include "integration/rcdmeasuring.h"

using Simulator::Scenario;

/// The Ia/Ta test. One instrument serves for all.
class TestRcdIaTaFailures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void EndsWithItsError_data();
    void EndsWithItsError();

private:
    std::unique_ptr<RcdMeasuring> _rcd;
};

void TestRcdIaTaFailures::initTestCase()
{
    _rcd = std::make_unique<RcdMeasuring>();
}

void TestRcdIaTaFailures::cleanupTestCase()
{
    _rcd.reset();
}

void TestRcdIaTaFailures::EndsWithItsError_data()
{
    AddRcdFailures();
    QTest::newRow("no result") << RcdFailure{Scenario::EndsWithoutResult, 1, 15, 521, 1, 1};
    QTest::newRow("check finds 3") << RcdFailure{Scenario::RcdCheck, 3, 15, 401, 1, 0};
    QTest::newRow("check finds 10") << RcdFailure{Scenario::RcdCheck, 10, 15, 401, 1, 0};
    QTest::newRow("check lost") << RcdFailure{Scenario::RcdCheckLost, 1, 15, 401, 1, 0};
    QTest::newRow("error 5 in the run") << RcdFailure{Scenario::RcdErrorOnce, 5, 15, 521, 1, 1};
}

void TestRcdIaTaFailures::EndsWithItsError()
{
    QFETCH(const RcdFailure, failure);
    _rcd->VerifyFailure(RcdKinds::IaTa2(), failure);
}

QTEST_GUILESS_MAIN(TestRcdIaTaFailures)
#include "tst_rcdiatafailures.moc"
