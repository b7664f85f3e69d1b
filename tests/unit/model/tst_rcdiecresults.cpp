#include <QtTest>

#include <Vesmar/rcdiecresults.h>

#include "resultschecks.h"

using Vesmar::RCDIECResults;

class TestRCDIECResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void KeepsEachReading();
};

void TestRCDIECResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(RCDIECResults(1.0F, 2.0F), 11);
}

void TestRCDIECResults::KeepsEachReading()
{
    const RCDIECResults results(1.5F, 2.5F);
    QCOMPARE(results._ia, 1.5F);
    QCOMPARE(results._ta, 2.5F);
}

QTEST_APPLESS_MAIN(TestRCDIECResults)
#include "tst_rcdiecresults.moc"
