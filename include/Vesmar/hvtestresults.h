#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the high-voltage test.
class VESMAR_EXPORT HVTestResults : public MeasurementResults
{
public:
    HVTestResults(float maxVoltage, float voltage, float current, float uln, float upri, float pwm);
    ~HVTestResults() override;

    float _maxVoltage; ///< Maximum voltage.
    float _voltage;
    float _current;
    float _uln;  ///< The reading ULN.
    float _upri; ///< Primary voltage.
    float _pwm;  ///< Pulse width as a fraction: the instrument's per cent divided by 100.
};

} // namespace Vesmar
