#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the differential current measurement.
class VESMAR_EXPORT IDELTAResults : public MeasurementResults
{
public:
    IDELTAResults(float current, float voltage);
    ~IDELTAResults() override;

    float _current;
    float _voltage;
};

} // namespace Vesmar
