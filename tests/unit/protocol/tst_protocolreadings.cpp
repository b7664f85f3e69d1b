#include <cmath>
#include <limits>
#include <memory>

#include <QtTest>

#include <Vesmar/hvtestresults.h>
#include <Vesmar/ideltaresults.h>
#include <Vesmar/iecresults.h>
#include <Vesmar/iperesults.h>
#include <Vesmar/isubresults.h>
#include <Vesmar/itresults.h>
#include <Vesmar/monitoringresults.h>
#include <Vesmar/powerresults.h>
#include <Vesmar/risoresults.h>
#include <Vesmar/rlnresults.h>
#include <Vesmar/rperesults.h>

#include "protocol/readings.h"
#include "support/wire.h"

using Vesmar::MeasurementResults;
using Vesmar::MeasurementType;
using Vesmar::Readings;

namespace
{

constexpr float NoValue = 3.4028235e38F;

/// A row: what the members of a function's results hold, beside what is due.
template <typename Results, typename... Members>
void Row(const char* name, MeasurementType function, const QVector<float>& due, Members Results::*... members)
{
    const Readings readings{1.0F, -2.5F, 3.0F, 0.25F, 1000.0F, 55.0F};
    const std::unique_ptr<const MeasurementResults> made(
        Vesmar::FindReadingsKind(function)->create(readings));
    const auto* results = dynamic_cast<const Results*>(made.get());
    QVector<float> found;
    if (results != nullptr) {
        found = {static_cast<float>(results->*members)...};
    }
    QTest::newRow(name) << found << due;
}

} // namespace

class TestProtocolReadings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void SixValuesAreTakenAsTheyStand()
    {
        const Readings numbers = Vesmar::DecodeReadings(WithChecksum(
            Wire::Bytes("00 00 80 3F 00 00 20 C0 00 00 40 40 00 00 80 3E 00 00 7A 44 00 00 5C 42")));
        QCOMPARE(numbers, (Readings{1.0F, -2.5F, 3.0F, 0.25F, 1000.0F, 55.0F}));

        const Readings odd = Vesmar::DecodeReadings(WithChecksum(
            Wire::Bytes("00 00 C0 7F 00 00 80 7F 00 00 80 FF FF FF 7F 7F 01 00 00 00 00 00 00 80")));
        QVERIFY(std::isnan(odd[0]));
        QVERIFY(std::isinf(odd[1]) && odd[1] > 0.0F);
        QVERIFY(std::isinf(odd[2]) && odd[2] < 0.0F);
        QVERIFY(odd[3] == NoValue);
        QVERIFY(odd[4] == std::numeric_limits<float>::denorm_min());
        QVERIFY(odd[5] == 0.0F && std::signbit(odd[5]));
    }

    void EachFunctionHasItsResults_data()
    {
        using namespace Vesmar;
        QTest::addColumn<QVector<float>>("found");
        QTest::addColumn<QVector<float>>("due");
        const QVector<float> two{1.0F, -2.5F};
        const QVector<float> three{1.0F, -2.5F, 3.0F};
        Row("Monitoring", MeasurementType::Monitoring, three, &MonitoringResults::_uln,
            &MonitoringResults::_unpe, &MonitoringResults::_frequency);
        Row("RLN", MeasurementType::RLN, {1.0F, -2.5F, 3.0F, 0.25F, 1000.0F}, &RLNResults::_resistance,
            &RLNResults::_voltage, &RLNResults::_current, &RLNResults::_isubVoltage,
            &RLNResults::_isubCurrent);
        Row("RPE", MeasurementType::RPE, three, &RPEResults::_resistance, &RPEResults::_voltage,
            &RPEResults::_current);
        Row("RISO", MeasurementType::RISO, three, &RISOResults::_resistance, &RISOResults::_voltage,
            &RISOResults::_current);
        Row("ISUB", MeasurementType::ISUB, two, &ISUBResults::_current, &ISUBResults::_voltage);
        Row("IPE", MeasurementType::IPE, two, &IPEResults::_current, &IPEResults::_voltage);
        Row("IDELTA", MeasurementType::IDELTA, two, &IDELTAResults::_current, &IDELTAResults::_voltage);
        Row("IT", MeasurementType::IT, {1.0F}, &ITResults::_current);
        Row("POWER", MeasurementType::POWER, {1.0F, -2.5F, 3.0F, 0.25F, 1000.0F, 55.0F},
            &POWERResults::_energy, &POWERResults::_power, &POWERResults::_current, &POWERResults::_voltage,
            &POWERResults::_powerFactor, &POWERResults::_apparentPower);
        Row("HVTest", MeasurementType::HVTest, {1.0F, -2.5F, 3.0F, 0.25F, 1000.0F, 0.55F},
            &HVTestResults::_maxVoltage, &HVTestResults::_voltage, &HVTestResults::_current,
            &HVTestResults::_uln, &HVTestResults::_upri, &HVTestResults::_pwm);
        Row("IEC", MeasurementType::IEC, {1.0F, -2.5F, 3.0F, 0.25F, 1.0F}, &IECResults::_result,
            &IECResults::_voltage, &IECResults::_uln, &IECResults::_step, &IECResults::_delay);
    }

    void EachFunctionHasItsResults()
    {
        QFETCH(const QVector<float>, found);
        QTEST(found, "due");
    }

    void OtherFunctionsHaveNone()
    {
        for (const int function : {-1, 10, 11, 12, 31, 96, 98}) {
            QVERIFY(Vesmar::FindReadingsKind(MeasurementType(function)) == nullptr);
        }
    }

    void ReIsTakenAsItStands_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<float>("re");
        const auto row = [](const char* name, const char* bytes, float re) {
            QTest::newRow(name) << Wire::Bytes(bytes) << re;
        };
        row("one half", "00 00 00 3F 10 27 A8 61", 0.5F);
        row("100", "00 00 C8 42", 100.0F);
        row("zero", "00 00 00 00", 0.0F);
        row("no value", "FF FF 7F 7F", NoValue);
        row("the marker of Ia and Ta means nothing here", "EE EE EE 3E", 0.466666639F);
        row("nothing", "", 0.0F);
        row("two bytes", "00 00", 0.0F);
        row("three bytes", "01 00 80", 1.17549449e-38F);
    }

    void ReIsTakenAsItStands()
    {
        QFETCH(const QByteArray, frame);
        QFETCH(const float, re);
        QVERIFY(Vesmar::DecodeRe(frame) == re);
    }

    void IaAndTaAreFixedPointNumbers_data()
    {
        QTest::addColumn<QByteArray>("frame");
        QTest::addColumn<float>("ia");
        QTest::addColumn<float>("ta");
        const auto row = [](const char* name, const char* bytes, float ia, float ta) {
            QTest::newRow(name) << Wire::Bytes(bytes) << ia << ta;
        };
        row("both", "00 00 00 00 10 27 A8 61", 1.0F, 2.5F);
        row("low bytes alone", "00 00 00 00 64 00 01 00", 0.01F, 0.0001F);
        row("bytes are unsigned", "00 00 00 00 FF FF 80 80", 6.5535F, 3.2896F);
        row("zero", "00 00 00 00 00 00 00 00", 0.0F, 0.0F);
        row("no Ta", "00 00 00 00 10 27 EE EE", 1.0F, NoValue);
        row("no Ia", "00 00 00 00 EE EE 10 27", NoValue, 1.0F);
        row("low byte of a marker", "00 00 00 00 EE 00 EE 00", 0.0238F, 0.0238F);
        row("high byte of a marker", "00 00 00 00 00 EE 00 EE", 6.0928F, 6.0928F);
        row("marker across the readings", "00 00 00 00 00 EE EE 00", 6.0928F, 0.0238F);
        row("nothing", "", 0.0F, 0.0F);
        row("four bytes", "00 00 00 00", 0.0F, 0.0F);
        row("five bytes", "00 00 00 00 10", 0.0016F, 0.0F);
        row("five bytes, half a marker", "00 00 00 00 EE", 0.0238F, 0.0F);
        row("six bytes, a marker", "00 00 00 00 EE EE", NoValue, 0.0F);
        row("seven bytes", "00 00 00 00 10 27 A8", 1.0F, 0.0168F);
        row("seven bytes, half a marker", "00 00 00 00 10 27 EE", 1.0F, 0.0238F);
    }

    void IaAndTaAreFixedPointNumbers()
    {
        QFETCH(const QByteArray, frame);
        const Vesmar::IaTa readings = Vesmar::DecodeIaTa(frame);
        QTEST(readings.ia, "ia");
        QTEST(readings.ta, "ta");
    }
};

QTEST_APPLESS_MAIN(TestProtocolReadings)
#include "tst_protocolreadings.moc"
