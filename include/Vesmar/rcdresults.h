#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the residual-current device test.
class VESMAR_EXPORT RCDResults : public MeasurementResults
{
public:
    RCDResults(float re, float ia, float ta);
    ~RCDResults() override;

    float _re; ///< The reading Re.
    float _ia; ///< The reading Ia.
    float _ta; ///< The reading Ta.
};

} // namespace Vesmar
