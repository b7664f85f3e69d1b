#include <Vesmar/rlnresults.h>

namespace Vesmar
{

RLNResults::RLNResults(float resistance, float voltage, float current, float isubVoltage, float isubCurrent)
    : MeasurementResults(MeasurementType::RLN, nullptr),
      _resistance(resistance),
      _voltage(voltage),
      _current(current),
      _isubCurrent(isubCurrent),
      _isubVoltage(isubVoltage)
{
}

RLNResults::~RLNResults() = default;

} // namespace Vesmar
