#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the insulation resistance measurement.
class VESMAR_EXPORT RISOResults : public MeasurementResults
{
public:
    RISOResults(float resistance, float voltage, float current);
    ~RISOResults() override;

    float _resistance; ///< Insulation resistance; the unit is the instrument's own and unknown.
    float _voltage;    ///< Voltage; the unit is the instrument's own and unknown.
    float _current;    ///< Current; the unit is the instrument's own and unknown.
};

} // namespace Vesmar
