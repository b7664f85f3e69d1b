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

    float _current;
    float _voltage;
};

} // namespace Vesmar
