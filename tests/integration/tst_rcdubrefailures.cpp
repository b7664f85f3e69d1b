#include "integration/rcdmeasuring.h"

using Simulator::Scenario;

/// The Ub/Re test, started at once. One instrument serves for all.
class TestRcdUbReFailures : public QObject
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

void TestRcdUbReFailures::initTestCase()
{
    _rcd = std::make_unique<RcdMeasuring>();
}

void TestRcdUbReFailures::cleanupTestCase()
{
    _rcd.reset();
}

void TestRcdUbReFailures::EndsWithItsError_data()
{
    AddRcdFailures();
    QTest::newRow("no result") << RcdFailure{Scenario::EndsWithoutResult, 1, 15, 521, 1, 1};
    QTest::newRow("check finds 3") << RcdFailure{Scenario::RcdCheck, 3, 15, 401, 1, 0};
    QTest::newRow("error 5 in the run") << RcdFailure{Scenario::RcdErrorOnce, 5, 15, 521, 1, 1};
}

void TestRcdUbReFailures::EndsWithItsError()
{
    QFETCH(const RcdFailure, failure);
    _rcd->VerifyFailure(RcdKinds::UbRe(), failure);
}

QTEST_GUILESS_MAIN(TestRcdUbReFailures)
#include "tst_rcdubrefailures.moc"
