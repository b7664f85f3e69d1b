#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the RLN measurement.
class VESMAR_EXPORT RLNResults : public MeasurementResults
{
public:
    /// The sub-test's voltage comes before its current here; the members are declared the other way round.
    RLNResults(float resistance, float voltage, float current, float isubVoltage, float isubCurrent);
    ~RLNResults() override;

    float _resistance;  ///< Resistance; the unit is the instrument's own and unknown.
    float _voltage;     ///< Voltage; the unit is the instrument's own and unknown.
    float _current;     ///< Current; the unit is the instrument's own and unknown.
    float _isubCurrent; ///< Current of the sub-test; the unit is the instrument's own and unknown.
    float _isubVoltage; ///< Voltage of the sub-test; the unit is the instrument's own and unknown.
};

} // namespace Vesmar
