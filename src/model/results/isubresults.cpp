#include <Vesmar/isubresults.h>

namespace Vesmar
{

ISUBResults::ISUBResults(float current, float voltage)
    : MeasurementResults(MeasurementType::ISUB, nullptr), _current(current), _voltage(voltage)
{
}

ISUBResults::~ISUBResults() = default;

} // namespace Vesmar
