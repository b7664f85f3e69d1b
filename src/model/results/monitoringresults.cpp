#include <Vesmar/monitoringresults.h>

namespace Vesmar
{

MonitoringResults::MonitoringResults(float uln, float unpe, float frequency)
    : MeasurementResults(MeasurementType::Monitoring, nullptr), _uln(uln), _unpe(unpe), _frequency(frequency)
{
}

MonitoringResults::~MonitoringResults() = default;

} // namespace Vesmar
