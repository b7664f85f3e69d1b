#include <Vesmar/itresults.h>

namespace Vesmar
{

ITResults::ITResults(float current) : MeasurementResults(MeasurementType::IT, nullptr), _current(current) {}

ITResults::~ITResults() = default;

} // namespace Vesmar
