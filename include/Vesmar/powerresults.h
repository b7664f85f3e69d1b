#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the power measurement.
class VESMAR_EXPORT POWERResults : public MeasurementResults
{
public:
    POWERResults(float energy, float power, float current, float voltage, float powerFactor,
                 float apparentPower);
    ~POWERResults() override;

    float _energy;        ///< Energy; the unit is the instrument's own and unknown.
    float _power;         ///< Power; the unit is the instrument's own and unknown.
    float _current;       ///< Current; the unit is the instrument's own and unknown.
    float _voltage;       ///< Voltage; the unit is the instrument's own and unknown.
    float _powerFactor;   ///< Power factor; its scale is the instrument's own and unknown.
    float _apparentPower; ///< Apparent power; the unit is the instrument's own and unknown.
};

} // namespace Vesmar
