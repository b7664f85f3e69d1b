#include <QtTest>

#include <Vesmar/iecresults.h>

#include "resultschecks.h"

using Vesmar::IECResults;

class TestIECResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void FollowsThePattern();
    void KeepsEachReading();
    void CutsTheFractionOfTheResultOff_data();
    void CutsTheFractionOfTheResultOff();
    void TurnsTheDelayIntoThousandths();
};

void TestIECResults::FollowsThePattern()
{
    ResultsChecks::VerifyPattern(IECResults(1.0F, 2.0F, 3.0F, 4.0F, 5.0F), 97);
}

void TestIECResults::KeepsEachReading()
{
    const IECResults results(2.9F, 2.5F, 3.5F, 4.5F, 250.0F);
    QCOMPARE(results._result, 2);
    QCOMPARE(results._voltage, 2.5F);
    QCOMPARE(results._uln, 3.5F);
    QCOMPARE(results._step, 4.5F);
    QCOMPARE(results._delay, 0.25F);
}

void TestIECResults::CutsTheFractionOfTheResultOff_data()
{
    QTest::addColumn<float>("argument");
    QTest::addColumn<int>("result");
    QTest::newRow("2.9") << 2.9F << 2;
    QTest::newRow("-2.9") << -2.9F << -2;
    QTest::newRow("0.99") << 0.99F << 0;
    QTest::newRow("-0.99") << -0.99F << 0;
    QTest::newRow("whole") << 7.0F << 7;
    QTest::newRow("large") << 16777216.0F << 16777216;
    QTest::newRow("large negative") << -16777216.0F << -16777216;
}

void TestIECResults::CutsTheFractionOfTheResultOff()
{
    QFETCH(const float, argument);
    QFETCH(const int, result);
    QCOMPARE(IECResults(argument, 0.0F, 0.0F, 0.0F, 0.0F)._result, result);
}

void TestIECResults::TurnsTheDelayIntoThousandths()
{
    QCOMPARE(IECResults(0.0F, 0.0F, 0.0F, 0.0F, 250.0F)._delay, 0.25F);
    QCOMPARE(IECResults(0.0F, 0.0F, 0.0F, 0.0F, -1000.0F)._delay, -1.0F);
}

QTEST_APPLESS_MAIN(TestIECResults)
#include "tst_iecresults.moc"
