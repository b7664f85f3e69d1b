#include <QtTest>

#include <Vesmar/ideltaresults.h>

#include "resultschecks.h"

using Vesmar::IDELTAResults;

class TestIDELTAResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void KeepsEachReading();
};

void TestIDELTAResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(IDELTAResults(1.0F, 2.0F), 6);
}

void TestIDELTAResults::KeepsEachReading()
{
    const IDELTAResults results(1.5F, 2.5F);
    QCOMPARE(results._current, 1.5F);
    QCOMPARE(results._voltage, 2.5F);
}

QTEST_APPLESS_MAIN(TestIDELTAResults)
#include "tst_ideltaresults.moc"
