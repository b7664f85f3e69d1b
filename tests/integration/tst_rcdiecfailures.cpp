#include "integration/rcdmeasuring.h"

using Simulator::Scenario;

/// The IEC Ia/Ta test. One instrument serves for all.
class TestRcdIecFailures : public QObject
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

void TestRcdIecFailures::initTestCase()
{
    _rcd = std::make_unique<RcdMeasuring>();
}

void TestRcdIecFailures::cleanupTestCase()
{
    _rcd.reset();
}

void TestRcdIecFailures::EndsWithItsError_data()
{
    AddRcdFailures();
    QTest::newRow("no result") << RcdFailure{Scenario::EndsWithoutResult, 1, 15, 521, 1, 1};
    QTest::newRow("check lost") << RcdFailure{Scenario::RcdCheckLost, 1, 15, 500, 1, 0};
    QTest::newRow("error when prepared") << RcdFailure{Scenario::RcdError, 7, 15, 15, 1, 0};
    QTest::newRow("error 4 in the run") << RcdFailure{Scenario::RcdErrorOnce, 4, 15, 521, 1, 1};
}

void TestRcdIecFailures::EndsWithItsError()
{
    QFETCH(const RcdFailure, failure);
    _rcd->VerifyFailure(RcdKinds::IecIaTa1(), failure);
}

QTEST_GUILESS_MAIN(TestRcdIecFailures)
#include "tst_rcdiecfailures.moc"
