#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the IEC variant of the RCD test.
class VESMAR_EXPORT RCDIECResults : public MeasurementResults
{
public:
    RCDIECResults(float ia, float ta);
    ~RCDIECResults() override;

    float _ia; ///< The reading Ia.
    float _ta; ///< The reading Ta.
};

} // namespace Vesmar
