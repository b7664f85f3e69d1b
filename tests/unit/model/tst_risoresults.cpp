#include <QtTest>

#include <Vesmar/risoresults.h>

#include "resultschecks.h"

using Vesmar::RISOResults;

class TestRISOResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void KeepsEachReading();
};

void TestRISOResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(RISOResults(1.0F, 2.0F, 3.0F), 3);
}

void TestRISOResults::KeepsEachReading()
{
    const RISOResults results(1.5F, 2.5F, 3.5F);
    QCOMPARE(results._resistance, 1.5F);
    QCOMPARE(results._voltage, 2.5F);
    QCOMPARE(results._current, 3.5F);
}

QTEST_APPLESS_MAIN(TestRISOResults)
#include "tst_risoresults.moc"
