#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the substitute leakage current measurement.
class VESMAR_EXPORT ISUBResults : public MeasurementResults
{
public:
    ISUBResults(float current, float voltage);
    ~ISUBResults() override;

    float _current; ///< Substitute leakage current; the unit is the instrument's own and unknown.
    float _voltage; ///< Voltage; the unit is the instrument's own and unknown.
};

} // namespace Vesmar
