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

    float _re; ///< Earth resistance.
    float _ia; ///< Tripping current.
    float _ta; ///< Tripping time.
};

} // namespace Vesmar
