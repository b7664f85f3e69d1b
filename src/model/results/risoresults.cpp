#include <Vesmar/risoresults.h>

namespace Vesmar
{

RISOResults::RISOResults(float resistance, float voltage, float current)
    : MeasurementResults(MeasurementType::RISO, nullptr),
      _resistance(resistance),
      _voltage(voltage),
      _current(current)
{
}

RISOResults::~RISOResults() = default;

} // namespace Vesmar
