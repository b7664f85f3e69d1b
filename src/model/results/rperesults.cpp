#include <Vesmar/rperesults.h>

namespace Vesmar
{

RPEResults::RPEResults(float resistance, float voltage, float current)
    : MeasurementResults(MeasurementType::RPE, nullptr),
      _resistance(resistance),
      _voltage(voltage),
      _current(current)
{
}

RPEResults::~RPEResults() = default;

} // namespace Vesmar
