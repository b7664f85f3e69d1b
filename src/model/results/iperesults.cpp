#include <Vesmar/iperesults.h>

namespace Vesmar
{

IPEResults::IPEResults(float current, float voltage)
    : MeasurementResults(MeasurementType::IPE, nullptr), _current(current), _voltage(voltage)
{
}

IPEResults::~IPEResults() = default;

} // namespace Vesmar
