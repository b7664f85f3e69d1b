#include <QtTest>

#include <Vesmar/isubresults.h>

#include "resultschecks.h"

using Vesmar::ISUBResults;

class TestISUBResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void KeepsEachReading();
};

void TestISUBResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(ISUBResults(1.0F, 2.0F), 4);
}

void TestISUBResults::KeepsEachReading()
{
    const ISUBResults results(1.5F, 2.5F);
    QCOMPARE(results._current, 1.5F);
    QCOMPARE(results._voltage, 2.5F);
}

QTEST_APPLESS_MAIN(TestISUBResults)
#include "tst_isubresults.moc"
