#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// The mains readings that the instrument takes while no measurement runs.
class VESMAR_EXPORT MonitoringResults : public MeasurementResults
{
public:
    MonitoringResults(float uln, float unpe, float frequency);
    ~MonitoringResults() override;

    float _uln;       ///< The reading ULN.
    float _unpe;      ///< The reading UNPE.
    float _frequency; ///< The reading f, a frequency.
};

} // namespace Vesmar
