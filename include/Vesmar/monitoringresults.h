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

    float _uln;       ///< Voltage between line and neutral.
    float _unpe;      ///< Voltage between neutral and protective earth.
    float _frequency; ///< Mains frequency.
};

} // namespace Vesmar
