#include "client/words/readings.h"

#include <cmath>

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

template <typename Results, typename... Members>
QVector<float> Values(const MeasurementResults& results, Members... members)
{
    const auto& concrete = static_cast<const Results&>(results);
    return {static_cast<float>(concrete.*members)...};
}

/// In the order of `ReadingNames`.
QVector<float> ReadingValues(const MeasurementResults& results)
{
    switch (results.GetMeasurementType()) {
    case MeasurementType::Monitoring:
        return Values<MonitoringResults>(results, &MonitoringResults::_uln, &MonitoringResults::_unpe,
                                         &MonitoringResults::_frequency);
    case MeasurementType::RLN:
        return Values<RLNResults>(results, &RLNResults::_resistance, &RLNResults::_voltage,
                                  &RLNResults::_current, &RLNResults::_isubVoltage,
                                  &RLNResults::_isubCurrent);
    case MeasurementType::RPE:
        return Values<RPEResults>(results, &RPEResults::_resistance, &RPEResults::_voltage,
                                  &RPEResults::_current);
    case MeasurementType::RISO:
        return Values<RISOResults>(results, &RISOResults::_resistance, &RISOResults::_voltage,
                                   &RISOResults::_current);
    case MeasurementType::ISUB:
        return Values<ISUBResults>(results, &ISUBResults::_current, &ISUBResults::_voltage);
    case MeasurementType::IPE:
        return Values<IPEResults>(results, &IPEResults::_current, &IPEResults::_voltage);
    case MeasurementType::IDELTA:
        return Values<IDELTAResults>(results, &IDELTAResults::_current, &IDELTAResults::_voltage);
    case MeasurementType::IT:
        return Values<ITResults>(results, &ITResults::_current);
    case MeasurementType::POWER:
        return Values<POWERResults>(results, &POWERResults::_energy, &POWERResults::_power,
                                    &POWERResults::_current, &POWERResults::_voltage,
                                    &POWERResults::_powerFactor, &POWERResults::_apparentPower);
    case MeasurementType::HVTest:
        return Values<HVTestResults>(results, &HVTestResults::_maxVoltage, &HVTestResults::_voltage,
                                     &HVTestResults::_current, &HVTestResults::_uln, &HVTestResults::_upri,
                                     &HVTestResults::_pwm);
    case MeasurementType::RCD:
        return Values<RCDResults>(results, &RCDResults::_re, &RCDResults::_ia, &RCDResults::_ta);
    case MeasurementType::RCDIEC:
        return Values<RCDIECResults>(results, &RCDIECResults::_ia, &RCDIECResults::_ta);
    case MeasurementType::IEC:
        return Values<IECResults>(results, &IECResults::_result, &IECResults::_voltage, &IECResults::_uln,
                                  &IECResults::_step, &IECResults::_delay);
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
    switch (function) {
    case MeasurementType::Monitoring:
        return {"ULN", "UNPE", "frequency"};
    case MeasurementType::RLN:
        return {"resistance", "voltage", "current", "ISUB voltage", "ISUB current"};
    case MeasurementType::RPE:
    case MeasurementType::RISO:
        return {"resistance", "voltage", "current"};
    case MeasurementType::ISUB:
    case MeasurementType::IPE:
    case MeasurementType::IDELTA:
        return {"current", "voltage"};
    case MeasurementType::IT:
        return {"current"};
    case MeasurementType::POWER:
        return {"energy", "power", "current", "voltage", "power factor", "apparent power"};
    case MeasurementType::HVTest:
        return {"maximum voltage", "voltage", "current", "ULN", "primary voltage", "PWM"};
    case MeasurementType::RCD:
        return {"Re", "Ia", "Ta"};
    case MeasurementType::RCDIEC:
        return {"Ia", "Ta"};
    case MeasurementType::IEC:
        return {"result", "voltage", "ULN", "step", "delay"};
    default:
        return {};
    }
}

QVector<Reading> ReadingsOf(const MeasurementResults& results)
{
    const QVector<const char*> names = ReadingNames(results.GetMeasurementType());
    const QVector<float> values = ReadingValues(results);
    QVector<Reading> readings;
    readings.reserve(names.size());
    for (int i = 0; i < names.size(); ++i) {
        readings.append({names.at(i), values.at(i)});
    }
    return readings;
}

} // namespace VesmarClient
