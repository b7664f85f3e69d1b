#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the differential current measurement.
class VESMAR_EXPORT IDELTAResults : public MeasurementResults
{
public:
    IDELTAResults(float current, float voltage);
    ~IDELTAResults() override;

    float _current; ///< Differential current; the unit is the instrument's own and unknown.
    float _voltage; ///< Voltage; the unit is the instrument's own and unknown.
};

} // namespace Vesmar
