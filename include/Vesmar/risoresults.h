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

    float _resistance;
    float _voltage;
    float _current;
};

} // namespace Vesmar
