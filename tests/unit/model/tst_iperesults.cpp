#include <QtTest>

#include <Vesmar/iperesults.h>

#include "resultschecks.h"

using Vesmar::IPEResults;

class TestIPEResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void KeepsEachReading();
};

void TestIPEResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(IPEResults(1.0F, 2.0F), 5);
}

void TestIPEResults::KeepsEachReading()
{
    const IPEResults results(1.5F, 2.5F);
    QCOMPARE(results._current, 1.5F);
    QCOMPARE(results._voltage, 2.5F);
}

QTEST_APPLESS_MAIN(TestIPEResults)
#include "tst_iperesults.moc"
