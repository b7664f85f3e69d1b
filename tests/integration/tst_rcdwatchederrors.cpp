#include "integration/rcdmeasuring.h"

using Simulator::Scenario;

/// The error of an Ub/Re test that is prepared and watched. One instrument serves for all.
class TestRcdWatchedErrors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void EndsTheWatch_data();
    void EndsTheWatch();

private:
    std::unique_ptr<RcdMeasuring> _rcd;
};

void TestRcdWatchedErrors::initTestCase()
{
    _rcd = std::make_unique<RcdMeasuring>();
}

void TestRcdWatchedErrors::cleanupTestCase()
{
    _rcd.reset();
}

void TestRcdWatchedErrors::EndsTheWatch_data()
{
    QTest::addColumn<int>("number");
    constexpr int Errors = 15;
    for (int number = 0; number < Errors; ++number) {
        QTest::addRow("%d", number) << number;
    }
}

void TestRcdWatchedErrors::EndsTheWatch()
{
    QFETCH(const int, number);
    const RcdKind kind = RcdKinds::UbRe();
    _rcd->instrument.SetScenario(Scenario::RcdError, number);
    _rcd->instrument.ClearRequests();
    _rcd->Prepare(*kind.settings);
    QTRY_COMPARE_WITH_TIMEOUT(_rcd->tester.ErrorCode(), QByteArray::number(520 + number), Patience);
    _rcd->AwaitWithdrawal();
    QCOMPARE(_rcd->CountSent(kind.prepare), 1);
    QCOMPARE(_rcd->EndedRuns(), 0);
}

QTEST_GUILESS_MAIN(TestRcdWatchedErrors)
#include "tst_rcdwatchederrors.moc"
