#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the IEC variant of the residual-current device test. A reading that the instrument could not
/// measure is `NoValue`.
class VESMAR_EXPORT RCDIECResults : public MeasurementResults
{
public:
    RCDIECResults(float ia, float ta);
    ~RCDIECResults() override;

    /// Ia, the tripping current: the instrument's number divided by 10000; the unit is the instrument's own
    /// and unknown.
    float _ia;
    /// Ta, the tripping time: the instrument's number divided by 10000; the unit is the instrument's own and
    /// unknown.
    float _ta;
};

} // namespace Vesmar
