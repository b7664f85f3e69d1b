#include "simulator/model/readings.h"

#include <algorithm>
#include <cmath>

namespace Simulator
{

namespace
{

constexpr float MainsVoltage = 230.0F;
constexpr float Noise = 0.003F;         // as a fraction of a value
constexpr float SettlingSeconds = 0.4F; // the time constant
constexpr float Overshoot = 0.5F;       // as a fraction of a value that settles from above

constexpr float RampSeconds = 3.0F; // until the high voltage is complete
constexpr float SecondsPerHour = 3600.0F;

/// Returns a resistance with the voltage and the current of its measurement.
Values FromResistanceAndCurrent(float resistance, float current)
{
    return {resistance, resistance * current, current, 0.0F, 0.0F, 0.0F};
}

} // namespace

Readings::Readings(quint32 seed) : _generator(seed) {}

void Readings::Begin(Measurement measurement)
{
    _measurement = measurement;
    _elapsed = std::chrono::milliseconds(0);
    _values.fill(0.0F);
}

void Readings::Advance(std::chrono::milliseconds step)
{
    _elapsed += step;
    _values = NextValues(std::chrono::duration<float>(step).count());
}

QByteArray Readings::Data() const
{
    return PackValues(_values);
}

Values Readings::NextValues(float seconds)
{
    switch (_measurement) {
    case Measurement::Rln: {
        Values values = FromResistanceAndCurrent(Near(52.0F), Near(0.08F));
        values[3] = Near(40.0F);
        values[4] = Near(0.21F);
        return values;
    }
    case Measurement::Iec:
        return {1.0F, Near(MainsVoltage), Near(MainsVoltage), 3.0F, Near(12.0F), 0.0F};
    case Measurement::Rpe:
        return FromResistanceAndCurrent(Falling(0.118F), Near(0.2F));
    case Measurement::Riso: {
        const float voltage = Rising(525.0F);
        const float resistance = Rising(125.0F);
        return {resistance, voltage, voltage / resistance, 0.0F, 0.0F, 0.0F};
    }
    case Measurement::Isub:
        return {Rising(0.21F), Near(MainsVoltage), 0.0F, 0.0F, 0.0F, 0.0F};
    case Measurement::Ipe:
        return {Falling(0.35F), Near(MainsVoltage), 0.0F, 0.0F, 0.0F, 0.0F};
    case Measurement::Idelta:
        return {Falling(0.42F), Near(MainsVoltage), 0.0F, 0.0F, 0.0F, 0.0F};
    case Measurement::It:
        return {Falling(0.06F), 0.0F, 0.0F, 0.0F, 0.0F, 0.0F};
    case Measurement::Power:
        return NextPower(seconds / SecondsPerHour);
    case Measurement::HvTest:
        return NextHighVoltage();
    }
    return {};
}

/// Returns energy, power, current, voltage, power factor and apparent power.
Values Readings::NextPower(float hours)
{
    const float current = Falling(1.85F);
    const float voltage = Near(MainsVoltage);
    const float apparentPower = voltage * current;
    const float powerFactor = std::min(Near(0.968F), 1.0F);
    const float power = apparentPower * powerFactor;
    return {_values[0] + power * hours, power, current, voltage, powerFactor, apparentPower};
}

/// Returns highest voltage so far, voltage, current, mains voltage, voltage at the primary side and pulse
/// width.
Values Readings::NextHighVoltage()
{
    const float ramp = std::min(Elapsed() / RampSeconds, 1.0F);
    const float voltage = Near(1500.0F) * ramp;
    return {std::max(_values[0], voltage),
            voltage,
            Near(0.8F) * ramp,
            Near(MainsVoltage),
            Near(24.0F) * ramp,
            62.0F * ramp};
}

float Readings::Near(float value)
{
    std::normal_distribution<float> noise(value, value * Noise);
    return noise(_generator);
}

float Readings::Rising(float value)
{
    return Near(value) * (1.0F - std::exp(-Elapsed() / SettlingSeconds));
}

float Readings::Falling(float value)
{
    return Near(value) * (1.0F + Overshoot * std::exp(-Elapsed() / SettlingSeconds));
}

float Readings::Elapsed() const
{
    return std::chrono::duration<float>(_elapsed).count();
}

} // namespace Simulator
