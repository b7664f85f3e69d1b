#include "client/words/readings.h"

#include <cmath>

#include <QCoreApplication>

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

namespace VesmarClient
{

namespace
{

using Vesmar::HVTestResults;
using Vesmar::IDELTAResults;
using Vesmar::IECResults;
using Vesmar::IPEResults;
using Vesmar::ISUBResults;
using Vesmar::ITResults;
using Vesmar::MeasurementResults;
using Vesmar::MeasurementType;
using Vesmar::MonitoringResults;
using Vesmar::POWERResults;
using Vesmar::RCDIECResults;
using Vesmar::RCDResults;
using Vesmar::RISOResults;
using Vesmar::RLNResults;
using Vesmar::RPEResults;

template <typename Member>
struct ClassOf;
template <typename Class, typename Value>
struct ClassOf<Value Class::*> {
    using Type = Class;
};

template <auto Member>
float ValueOf(const MeasurementResults& results)
{
    return static_cast<float>(static_cast<const typename ClassOf<decltype(Member)>::Type&>(results).*Member);
}

/// A reading's name, and how it is found in the results of its function.
struct NamedReading {
    const char* name;
    float (*valueOf)(const MeasurementResults& results);
};

template <typename Results>
QVector<NamedReading> ResistanceReadings()
{
    return {{QT_TRANSLATE_NOOP("VesmarClient", "resistance"), ValueOf<&Results::_resistance>},
            {QT_TRANSLATE_NOOP("VesmarClient", "voltage"), ValueOf<&Results::_voltage>},
            {QT_TRANSLATE_NOOP("VesmarClient", "current"), ValueOf<&Results::_current>}};
}

template <typename Results>
QVector<NamedReading> LeakageReadings()
{
    return {{QT_TRANSLATE_NOOP("VesmarClient", "current"), ValueOf<&Results::_current>},
            {QT_TRANSLATE_NOOP("VesmarClient", "voltage"), ValueOf<&Results::_voltage>}};
}

QVector<NamedReading> PowerReadings()
{
    return {{QT_TRANSLATE_NOOP("VesmarClient", "energy"), ValueOf<&POWERResults::_energy>},
            {QT_TRANSLATE_NOOP("VesmarClient", "power"), ValueOf<&POWERResults::_power>},
            {QT_TRANSLATE_NOOP("VesmarClient", "current"), ValueOf<&POWERResults::_current>},
            {QT_TRANSLATE_NOOP("VesmarClient", "voltage"), ValueOf<&POWERResults::_voltage>},
            {QT_TRANSLATE_NOOP("VesmarClient", "power factor"), ValueOf<&POWERResults::_powerFactor>},
            {QT_TRANSLATE_NOOP("VesmarClient", "apparent power"), ValueOf<&POWERResults::_apparentPower>}};
}

QVector<NamedReading> HvTestReadings()
{
    return {{QT_TRANSLATE_NOOP("VesmarClient", "maximum voltage"), ValueOf<&HVTestResults::_maxVoltage>},
            {QT_TRANSLATE_NOOP("VesmarClient", "voltage"), ValueOf<&HVTestResults::_voltage>},
            {QT_TRANSLATE_NOOP("VesmarClient", "current"), ValueOf<&HVTestResults::_current>},
            {QT_TRANSLATE_NOOP("VesmarClient", "ULN"), ValueOf<&HVTestResults::_uln>},
            {QT_TRANSLATE_NOOP("VesmarClient", "primary voltage"), ValueOf<&HVTestResults::_upri>},
            {QT_TRANSLATE_NOOP("VesmarClient", "PWM"), ValueOf<&HVTestResults::_pwm>}};
}

QVector<NamedReading> RlnReadings()
{
    return {{QT_TRANSLATE_NOOP("VesmarClient", "resistance"), ValueOf<&RLNResults::_resistance>},
            {QT_TRANSLATE_NOOP("VesmarClient", "voltage"), ValueOf<&RLNResults::_voltage>},
            {QT_TRANSLATE_NOOP("VesmarClient", "current"), ValueOf<&RLNResults::_current>},
            {QT_TRANSLATE_NOOP("VesmarClient", "ISUB voltage"), ValueOf<&RLNResults::_isubVoltage>},
            {QT_TRANSLATE_NOOP("VesmarClient", "ISUB current"), ValueOf<&RLNResults::_isubCurrent>}};
}

QVector<NamedReading> IecReadings()
{
    return {{QT_TRANSLATE_NOOP("VesmarClient", "result"), ValueOf<&IECResults::_result>},
            {QT_TRANSLATE_NOOP("VesmarClient", "voltage"), ValueOf<&IECResults::_voltage>},
            {QT_TRANSLATE_NOOP("VesmarClient", "ULN"), ValueOf<&IECResults::_uln>},
            {QT_TRANSLATE_NOOP("VesmarClient", "step"), ValueOf<&IECResults::_step>},
            {QT_TRANSLATE_NOOP("VesmarClient", "delay"), ValueOf<&IECResults::_delay>}};
}

/// The readings of a function, in the order in which they are shown.
QVector<NamedReading> NamedReadings(MeasurementType function)
{
    switch (function) {
    case MeasurementType::Monitoring:
        return {{QT_TRANSLATE_NOOP("VesmarClient", "ULN"), ValueOf<&MonitoringResults::_uln>},
                {QT_TRANSLATE_NOOP("VesmarClient", "UNPE"), ValueOf<&MonitoringResults::_unpe>},
                {QT_TRANSLATE_NOOP("VesmarClient", "frequency"), ValueOf<&MonitoringResults::_frequency>}};
    case MeasurementType::RLN:
        return RlnReadings();
    case MeasurementType::RPE:
        return ResistanceReadings<RPEResults>();
    case MeasurementType::RISO:
        return ResistanceReadings<RISOResults>();
    case MeasurementType::ISUB:
        return LeakageReadings<ISUBResults>();
    case MeasurementType::IPE:
        return LeakageReadings<IPEResults>();
    case MeasurementType::IDELTA:
        return LeakageReadings<IDELTAResults>();
    case MeasurementType::IT:
        return {{QT_TRANSLATE_NOOP("VesmarClient", "current"), ValueOf<&ITResults::_current>}};
    case MeasurementType::POWER:
        return PowerReadings();
    case MeasurementType::HVTest:
        return HvTestReadings();
    case MeasurementType::RCD:
        return {{QT_TRANSLATE_NOOP("VesmarClient", "Re"), ValueOf<&RCDResults::_re>},
                {QT_TRANSLATE_NOOP("VesmarClient", "Ia"), ValueOf<&RCDResults::_ia>},
                {QT_TRANSLATE_NOOP("VesmarClient", "Ta"), ValueOf<&RCDResults::_ta>}};
    case MeasurementType::RCDIEC:
        return {{QT_TRANSLATE_NOOP("VesmarClient", "Ia"), ValueOf<&RCDIECResults::_ia>},
                {QT_TRANSLATE_NOOP("VesmarClient", "Ta"), ValueOf<&RCDIECResults::_ta>}};
    case MeasurementType::IEC:
        return IecReadings();
    default:
        return {};
    }
}

} // namespace

bool IsPresent(float reading)
{
    return std::isfinite(reading) && reading != MeasurementResults::NoValue;
}

QVector<const char*> ReadingNames(MeasurementType function)
{
    QVector<const char*> names;
    for (const NamedReading& reading : NamedReadings(function)) {
        names.append(reading.name);
    }
    return names;
}

QVector<DriverReading> ReadingsOf(const MeasurementResults& results)
{
    QVector<DriverReading> readings;
    for (const NamedReading& reading : NamedReadings(results.GetMeasurementType())) {
        readings.append({reading.name, reading.valueOf(results)});
    }
    return readings;
}

} // namespace VesmarClient
