#include <QtTest>

#include <Vesmar/measurementresults.h>

#include "resultschecks.h"

using Vesmar::MeasurementResults;
using Vesmar::MeasurementType;

class TestMeasurementResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void BelongsToItsParent();
    void AnAbsentReadingIsTheLargestFloat();
};

void TestMeasurementResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(MeasurementResults(MeasurementType::None, nullptr), -1);
    ResultsChecks::VerifyPattern(MeasurementResults(MeasurementType(55), nullptr), 55);
}

void TestMeasurementResults::BelongsToItsParent()
{
    QObject parent;
    const MeasurementResults results(MeasurementType::RPE, &parent);
    QCOMPARE(results.parent(), &parent);
}

void TestMeasurementResults::AnAbsentReadingIsTheLargestFloat()
{
    QVERIFY(MeasurementResults::NoValue == 3.4028235e38F);
}

QTEST_APPLESS_MAIN(TestMeasurementResults)
#include "tst_measurementresults.moc"
