#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the IEC measurement.
class VESMAR_EXPORT IECResults : public MeasurementResults
{
public:
    IECResults(float result, float voltage, float uln, float step, float delay);
    ~IECResults() override;

    int _result; ///< The instrument's result number, its fraction cut off.
    float _voltage;
    float _uln;   ///< The reading ULN.
    float _step;  ///< Step of the instrument's procedure.
    float _delay; ///< The instrument's delay divided by 1000.
};

} // namespace Vesmar
