#include <QtTest>

#include <Vesmar/monitoringresults.h>

#include "resultschecks.h"

using Vesmar::MonitoringResults;

class TestMonitoringResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void KeepsEachReading();
};

void TestMonitoringResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(MonitoringResults(1.0F, 2.0F, 3.0F), 0);
}

void TestMonitoringResults::KeepsEachReading()
{
    const MonitoringResults results(1.5F, 2.5F, 3.5F);
    QCOMPARE(results._uln, 1.5F);
    QCOMPARE(results._unpe, 2.5F);
    QCOMPARE(results._frequency, 3.5F);
}

QTEST_APPLESS_MAIN(TestMonitoringResults)
#include "tst_monitoringresults.moc"
