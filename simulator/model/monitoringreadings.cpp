#include "simulator/model/monitoringreadings.h"

#include <cmath>

#include "simulator/wire/packedvalues.h"

namespace Simulator
{

namespace
{

constexpr float UsualMainsVoltage = 230.0F;
constexpr float UsualEarthVoltage = 0.4F;
constexpr float UsualFrequency = 50.0F;

constexpr float MainsVoltageStep = 0.6F;
constexpr float EarthVoltageStep = 0.05F;
constexpr float FrequencyStep = 0.01F;

} // namespace

MonitoringReadings::MonitoringReadings(quint32 seed)
    : _generator(seed),
      _mainsVoltage(UsualMainsVoltage),
      _earthVoltage(UsualEarthVoltage),
      _frequency(UsualFrequency)
{
}

void MonitoringReadings::Advance()
{
    _mainsVoltage = Wandered(_mainsVoltage, UsualMainsVoltage, MainsVoltageStep);
    _earthVoltage = std::abs(Wandered(_earthVoltage, UsualEarthVoltage, EarthVoltageStep));
    _frequency = Wandered(_frequency, UsualFrequency, FrequencyStep);
}

QByteArray MonitoringReadings::Data() const
{
    return PackValues({_mainsVoltage, _earthVoltage, _frequency, 0.0F, 0.0F, 0.0F});
}

float MonitoringReadings::Wandered(float value, float usual, float step)
{
    constexpr float Pull = 0.1F; // back towards the usual value, so that the walk never leaves
    std::normal_distribution<float> noise(0.0F, step);
    return value + Pull * (usual - value) + noise(_generator);
}

} // namespace Simulator
