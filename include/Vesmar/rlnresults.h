#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the RLN measurement.
class VESMAR_EXPORT RLNResults : public MeasurementResults
{
public:
    RLNResults(float resistance, float voltage, float current, float isubVoltage, float isubCurrent);
    ~RLNResults() override;

    float _resistance;
    float _voltage;
    float _current;
    float _isubCurrent; ///< Current of the sub-test.
    float _isubVoltage; ///< Voltage of the sub-test.
};

} // namespace Vesmar
