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

    float _resistance; ///< Protective-earth resistance; the unit is the instrument's own and unknown.
    float _voltage;    ///< Voltage; the unit is the instrument's own and unknown.
    float _current;    ///< Current; the unit is the instrument's own and unknown.
};

} // namespace Vesmar
