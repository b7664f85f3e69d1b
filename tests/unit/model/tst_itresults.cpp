#include <QtTest>

#include <Vesmar/itresults.h>

#include "resultschecks.h"

using Vesmar::ITResults;

class TestITResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void KeepsEachReading();
};

void TestITResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(ITResults(1.0F), 7);
}

void TestITResults::KeepsEachReading()
{
    const ITResults results(1.5F);
    QCOMPARE(results._current, 1.5F);
}

QTEST_APPLESS_MAIN(TestITResults)
#include "tst_itresults.moc"
