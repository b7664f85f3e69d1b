#include <array>
#include <limits>
#include <type_traits>

#include <QSharedPointer>
#include <QtTest>

#include <Vesmar/hvtestresults.h>
#include <Vesmar/ideltaresults.h>
#include <Vesmar/iecresults.h>
#include <Vesmar/iperesults.h>
#include <Vesmar/isubresults.h>
#include <Vesmar/itresults.h>
#include <Vesmar/monitoringresults.h>
#include <Vesmar/powerresults.h>
#include <Vesmar/rcdiecresults.h>
#include <Vesmar/rcdresults.h>
#include <Vesmar/risoresults.h>
#include <Vesmar/rlnresults.h>
#include <Vesmar/rperesults.h>

using namespace Vesmar;

namespace
{

/// A row with new results of a class, what its members hold and what they are expected to hold, both in the
/// order of the constructor's arguments.
template <typename Results, typename... Members>
void AddRow(const char* name, int function, Results* results, const QVector<float>& expected,
            Members Results::*... members)
{
    static_assert(std::is_base_of_v<MeasurementResults, Results>);
    static_assert(std::has_virtual_destructor_v<Results>);
    QTest::newRow(name) << QSharedPointer<MeasurementResults>(results) << function
                        << QVector<float>{static_cast<float>(results->*members)...} << expected;
}

void AddHVTest(const char* name, float pulseWidth, float expected)
{
    AddRow(name, 9, new HVTestResults(1.5F, 2.5F, 3.5F, 4.5F, 5.5F, pulseWidth),
           {1.5F, 2.5F, 3.5F, 4.5F, 5.5F, expected}, &HVTestResults::_maxVoltage, &HVTestResults::_voltage,
           &HVTestResults::_current, &HVTestResults::_uln, &HVTestResults::_upri, &HVTestResults::_pwm);
}

void AddIEC(const char* name, float delay, float expected)
{
    AddRow(name, 97, new IECResults(7.0F, 2.5F, 3.5F, 4.5F, delay), {7.0F, 2.5F, 3.5F, 4.5F, expected},
           &IECResults::_result, &IECResults::_voltage, &IECResults::_uln, &IECResults::_step,
           &IECResults::_delay);
}

} // namespace

class TestResults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void KeepEachReading_data()
    {
        QTest::addColumn<QSharedPointer<MeasurementResults>>("results");
        QTest::addColumn<int>("function");
        QTest::addColumn<QVector<float>>("readings");
        QTest::addColumn<QVector<float>>("expected");
        AddRow("base", -1, new MeasurementResults(MeasurementType::None, nullptr), {});
        AddRow("base of an unnamed function", 55, new MeasurementResults(MeasurementType(55), nullptr), {});
        AddRow("Monitoring", 0, new MonitoringResults(1.5F, 2.5F, 3.5F), {1.5F, 2.5F, 3.5F},
               &MonitoringResults::_uln, &MonitoringResults::_unpe, &MonitoringResults::_frequency);
        AddRow("RLN", 1, new RLNResults(1.5F, 2.5F, 3.5F, 4.5F, 5.5F), {1.5F, 2.5F, 3.5F, 4.5F, 5.5F},
               &RLNResults::_resistance, &RLNResults::_voltage, &RLNResults::_current,
               &RLNResults::_isubVoltage, &RLNResults::_isubCurrent);
        AddRow("RPE", 2, new RPEResults(1.5F, 2.5F, 3.5F), {1.5F, 2.5F, 3.5F}, &RPEResults::_resistance,
               &RPEResults::_voltage, &RPEResults::_current);
        AddRow("RISO", 3, new RISOResults(1.5F, 2.5F, 3.5F), {1.5F, 2.5F, 3.5F}, &RISOResults::_resistance,
               &RISOResults::_voltage, &RISOResults::_current);
        AddRow("ISUB", 4, new ISUBResults(1.5F, 2.5F), {1.5F, 2.5F}, &ISUBResults::_current,
               &ISUBResults::_voltage);
        AddRow("IPE", 5, new IPEResults(1.5F, 2.5F), {1.5F, 2.5F}, &IPEResults::_current,
               &IPEResults::_voltage);
        AddRow("IDELTA", 6, new IDELTAResults(1.5F, 2.5F), {1.5F, 2.5F}, &IDELTAResults::_current,
               &IDELTAResults::_voltage);
        AddRow("IT", 7, new ITResults(1.5F), {1.5F}, &ITResults::_current);
        AddRow("POWER", 8, new POWERResults(1.5F, 2.5F, 3.5F, 4.5F, 5.5F, 6.5F),
               {1.5F, 2.5F, 3.5F, 4.5F, 5.5F, 6.5F}, &POWERResults::_energy, &POWERResults::_power,
               &POWERResults::_current, &POWERResults::_voltage, &POWERResults::_powerFactor,
               &POWERResults::_apparentPower);
        AddHVTest("HVTest with 55 per cent", 55.0F, 0.55F);
        AddHVTest("HVTest with 100 per cent", 100.0F, 1.0F);
        AddHVTest("HVTest with less than nothing", -1.0F, -0.01F);
        AddRow("RCD", 10, new RCDResults(1.5F, 2.5F, 3.5F), {1.5F, 2.5F, 3.5F}, &RCDResults::_re,
               &RCDResults::_ia, &RCDResults::_ta);
        AddRow("RCDIEC", 11, new RCDIECResults(1.5F, 2.5F), {1.5F, 2.5F}, &RCDIECResults::_ia,
               &RCDIECResults::_ta);
        AddIEC("IEC with a delay of 250", 250.0F, 0.25F);
        AddIEC("IEC with a negative delay", -1000.0F, -1.0F);
    }

    void KeepEachReading()
    {
        QFETCH(const QSharedPointer<MeasurementResults>, results);
        QFETCH(const int, function);
        QFETCH(const QVector<float>, readings);
        QTEST(readings, "expected");
        QCOMPARE(static_cast<int>(results->GetMeasurementType()), function);
        QVERIFY(results->parent() == nullptr);
        QCOMPARE(results->metaObject()->className(), "Vesmar::MeasurementResults");
        QCOMPARE(results->_values, (std::array<float, 6>{}));
    }

    void ResultOfIECLosesItsFraction_data()
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
        QTest::newRow("more than an integer holds") << 3.0e9F << 2147483647;
        QTest::newRow("less than an integer holds") << -3.0e9F << int(-2147483648);
        QTest::newRow("not a number") << std::numeric_limits<float>::quiet_NaN() << 0;
    }

    void ResultOfIECLosesItsFraction()
    {
        QFETCH(const float, argument);
        QTEST(IECResults(argument, 0.0F, 0.0F, 0.0F, 0.0F)._result, "result");
    }

    void BaseBelongsToItsParent()
    {
        QObject parent;
        const MeasurementResults results(MeasurementType::RPE, &parent);
        QCOMPARE(results.parent(), &parent);
    }

    void AnAbsentReadingIsTheLargestFloat() { QVERIFY(MeasurementResults::NoValue == 3.4028235e38F); }
};

QTEST_APPLESS_MAIN(TestResults)
#include "tst_results.moc"
