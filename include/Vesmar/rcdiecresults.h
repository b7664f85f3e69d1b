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

    float _ia; ///< Tripping current.
    float _ta; ///< Tripping time.
};

} // namespace Vesmar
