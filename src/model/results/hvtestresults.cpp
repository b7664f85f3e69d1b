#include <Vesmar/hvtestresults.h>

namespace Vesmar
{

HVTestResults::HVTestResults(float maxVoltage, float voltage, float current, float uln, float upri, float pwm)
    : MeasurementResults(MeasurementType::HVTest, nullptr),
      _maxVoltage(maxVoltage),
      _voltage(voltage),
      _current(current),
      _uln(uln),
      _upri(upri),
      _pwm(pwm / 100.0F)
{
}

HVTestResults::~HVTestResults() = default;

} // namespace Vesmar
