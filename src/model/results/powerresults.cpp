#include <Vesmar/powerresults.h>

namespace Vesmar
{

POWERResults::POWERResults(float energy, float power, float current, float voltage, float powerFactor,
                           float apparentPower)
    : MeasurementResults(MeasurementType::POWER, nullptr),
      _energy(energy),
      _power(power),
      _current(current),
      _voltage(voltage),
      _powerFactor(powerFactor),
      _apparentPower(apparentPower)
{
}

POWERResults::~POWERResults() = default;

} // namespace Vesmar
