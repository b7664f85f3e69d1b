#include <Vesmar/ideltaresults.h>

namespace Vesmar
{

IDELTAResults::IDELTAResults(float current, float voltage)
    : MeasurementResults(MeasurementType::IDELTA, nullptr), _current(current), _voltage(voltage)
{
}

IDELTAResults::~IDELTAResults() = default;

} // namespace Vesmar
