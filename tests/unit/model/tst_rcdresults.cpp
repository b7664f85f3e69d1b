#include <QtTest>

#include <Vesmar/rcdresults.h>

#include "resultschecks.h"

using Vesmar::RCDResults;

class TestRCDResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void KeepsEachReading();
};

void TestRCDResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(RCDResults(1.0F, 2.0F, 3.0F), 10);
}

void TestRCDResults::KeepsEachReading()
{
    const RCDResults results(1.5F, 2.5F, 3.5F);
    QCOMPARE(results._re, 1.5F);
    QCOMPARE(results._ia, 2.5F);
    QCOMPARE(results._ta, 3.5F);
}

QTEST_APPLESS_MAIN(TestRCDResults)
#include "tst_rcdresults.moc"
