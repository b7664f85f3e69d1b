#include <QtTest>

#include <Vesmar/hvtestresults.h>

#include "resultschecks.h"

using Vesmar::HVTestResults;

class TestHVTestResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void KeepsEachReading();
    void TurnsThePulseWidthIntoAFraction();
};

void TestHVTestResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(HVTestResults(1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F), 9);
}

void TestHVTestResults::KeepsEachReading()
{
    const HVTestResults results(1.5F, 2.5F, 3.5F, 4.5F, 5.5F, 55.0F);
    QCOMPARE(results._maxVoltage, 1.5F);
    QCOMPARE(results._voltage, 2.5F);
    QCOMPARE(results._current, 3.5F);
    QCOMPARE(results._uln, 4.5F);
    QCOMPARE(results._upri, 5.5F);
    QCOMPARE(results._pwm, 0.55F);
}

void TestHVTestResults::TurnsThePulseWidthIntoAFraction()
{
    QCOMPARE(HVTestResults(0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 55.0F)._pwm, 0.55F);
    QCOMPARE(HVTestResults(0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 100.0F)._pwm, 1.0F);
    QCOMPARE(HVTestResults(0.0F, 0.0F, 0.0F, 0.0F, 0.0F, -1.0F)._pwm, -0.01F);
}

QTEST_APPLESS_MAIN(TestHVTestResults)
#include "tst_hvtestresults.moc"
