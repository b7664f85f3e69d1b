#include <QtTest>

#include <Vesmar/powerresults.h>

#include "resultschecks.h"

using Vesmar::POWERResults;

class TestPOWERResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void KeepsEachReading();
};

void TestPOWERResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(POWERResults(1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F), 8);
}

void TestPOWERResults::KeepsEachReading()
{
    const POWERResults results(1.5F, 2.5F, 3.5F, 4.5F, 5.5F, 6.5F);
    QCOMPARE(results._energy, 1.5F);
    QCOMPARE(results._power, 2.5F);
    QCOMPARE(results._current, 3.5F);
    QCOMPARE(results._voltage, 4.5F);
    QCOMPARE(results._powerFactor, 5.5F);
    QCOMPARE(results._apparentPower, 6.5F);
}

QTEST_APPLESS_MAIN(TestPOWERResults)
#include "tst_powerresults.moc"
