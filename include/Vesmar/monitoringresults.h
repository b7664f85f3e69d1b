#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// The mains readings that the instrument measures while no measurement function is active.
class VESMAR_EXPORT MonitoringResults : public MeasurementResults
{
public:
    MonitoringResults(float uln, float unpe, float frequency);
    ~MonitoringResults() override;

    float _uln;       ///< ULN, the mains voltage; the unit is the instrument's own and unknown.
    float _unpe;      ///< UNPE, the voltage between N and PE; the unit is the instrument's own and unknown.
    float _frequency; ///< Mains frequency; the unit is the instrument's own and unknown.
};

} // namespace Vesmar
