#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the residual-current device test. A reading that is absent is `NoValue`: Ia and Ta of the
/// Ub/Re test, and whatever the instrument could not measure.
class VESMAR_EXPORT RCDResults : public MeasurementResults
{
public:
    RCDResults(float re, float ia, float ta);
    ~RCDResults() override;

    /// Re, the earth resistance; after an Ia/Ta test it is the one from the settings (`RCDSettings::GetRe`).
    /// The unit is the instrument's own and unknown.
    float _re;
    /// Ia, the tripping current: the instrument's number divided by 10000; the unit is the instrument's own
    /// and unknown.
    float _ia;
    /// Ta, the tripping time: the instrument's number divided by 10000; the unit is the instrument's own and
    /// unknown.
    float _ta;
};

} // namespace Vesmar
