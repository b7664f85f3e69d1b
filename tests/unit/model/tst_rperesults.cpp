#include <QtTest>

#include <Vesmar/rperesults.h>

#include "resultschecks.h"

using Vesmar::RPEResults;

class TestRPEResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void KeepsEachReading();
};

void TestRPEResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(RPEResults(1.0F, 2.0F, 3.0F), 2);
}

void TestRPEResults::KeepsEachReading()
{
    const RPEResults results(1.5F, 2.5F, 3.5F);
    QCOMPARE(results._resistance, 1.5F);
    QCOMPARE(results._voltage, 2.5F);
    QCOMPARE(results._current, 3.5F);
}

QTEST_APPLESS_MAIN(TestRPEResults)
#include "tst_rperesults.moc"
