#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the residual-current device test. One that there is not is the largest float, 3.4028235e38: Ia
/// and Ta of the Ub/Re test, or what the instrument could not measure.
class VESMAR_EXPORT RCDResults : public MeasurementResults
{
public:
    RCDResults(float re, float ia, float ta);
    ~RCDResults() override;

    float _re; ///< The earth resistance; after an Ia/Ta test the one of its settings. Unit of the instrument.
    float _ia; ///< The tripping current; unit of the instrument.
    float _ta; ///< The tripping time; unit of the instrument.
};

} // namespace Vesmar
