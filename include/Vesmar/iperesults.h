#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the protective-conductor current measurement.
class VESMAR_EXPORT IPEResults : public MeasurementResults
{
public:
    IPEResults(float current, float voltage);
    ~IPEResults() override;

    float _current; ///< Protective-conductor current; the unit is the instrument's own and unknown.
    float _voltage; ///< Voltage; the unit is the instrument's own and unknown.
};

} // namespace Vesmar
