#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the IEC measurement.
class VESMAR_EXPORT IECResults : public MeasurementResults
{
public:
    /// The arguments are the values that the instrument sends; some members hold them scaled.
    IECResults(float result, float voltage, float uln, float step, float delay);
    ~IECResults() override;

    int _result;    ///< Result number, without its fraction; the meaning is the instrument's own.
    float _voltage; ///< Voltage; the unit is the instrument's own and unknown.
    float _uln;     ///< ULN, the mains voltage; the unit is the instrument's own and unknown.
    float _step;    ///< Step of the procedure; its scale is the instrument's own and unknown.
    float _delay;   ///< Delay, divided by 1000; the unit is the instrument's own and unknown.
};

} // namespace Vesmar
