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

    float _energy;
    float _power;
    float _current;
    float _voltage;
    float _powerFactor;
    float _apparentPower;
};

} // namespace Vesmar
