#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the protective-earth resistance measurement.
class VESMAR_EXPORT RPEResults : public MeasurementResults
{
public:
    RPEResults(float resistance, float voltage, float current);
    ~RPEResults() override;

    float _resistance;
    float _voltage;
    float _current;
};

} // namespace Vesmar
