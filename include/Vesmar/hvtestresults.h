#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the high-voltage test.
class VESMAR_EXPORT HVTestResults : public MeasurementResults
{
public:
    /// The arguments are the values that the instrument sends; some members hold them scaled.
    HVTestResults(float maxVoltage, float voltage, float current, float uln, float upri, float pwm);
    ~HVTestResults() override;

    float _maxVoltage; ///< Maximum voltage; the unit is the instrument's own and unknown.
    float _voltage;    ///< Voltage; the unit is the instrument's own and unknown.
    float _current;    ///< Current; the unit is the instrument's own and unknown.
    float _uln;        ///< ULN, the mains voltage; the unit is the instrument's own and unknown.
    float _upri;       ///< UPRI, the primary voltage; the unit is the instrument's own and unknown.
    float _pwm;        ///< PWM: the instrument's value divided by 100.
};

} // namespace Vesmar
