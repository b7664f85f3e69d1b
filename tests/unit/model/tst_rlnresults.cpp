#include <QtTest>

#include <Vesmar/rlnresults.h>

#include "resultschecks.h"

using Vesmar::RLNResults;

class TestRLNResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void KeepsEachReading();
    void KeepsTheSubTestReadingsApart();
};

void TestRLNResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(RLNResults(1.0F, 2.0F, 3.0F, 4.0F, 5.0F), 1);
}

void TestRLNResults::KeepsEachReading()
{
    const RLNResults results(1.5F, 2.5F, 3.5F, 4.5F, 5.5F);
    QCOMPARE(results._resistance, 1.5F);
    QCOMPARE(results._voltage, 2.5F);
    QCOMPARE(results._current, 3.5F);
    QCOMPARE(results._isubVoltage, 4.5F);
    QCOMPARE(results._isubCurrent, 5.5F);
}

void TestRLNResults::KeepsTheSubTestReadingsApart()
{
    const RLNResults results(1.0F, 2.0F, 3.0F, 4.0F, 5.0F);
    QCOMPARE(results._isubVoltage, 4.0F);
    QCOMPARE(results._isubCurrent, 5.0F);
}

QTEST_APPLESS_MAIN(TestRLNResults)
#include "tst_rlnresults.moc"
