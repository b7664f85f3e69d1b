#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the substitute leakage current measurement.
class VESMAR_EXPORT ISUBResults : public MeasurementResults
{
public:
    ISUBResults(float current, float voltage);
    ~ISUBResults() override;

    float _current;
    float _voltage;
};

} // namespace Vesmar
