#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Readings of the IEC variant of the RCD test. One that the instrument could not measure is the largest
/// float, 3.4028235e38.
class VESMAR_EXPORT RCDIECResults : public MeasurementResults
{
public:
    RCDIECResults(float ia, float ta);
    ~RCDIECResults() override;

    float _ia; ///< The tripping current; unit of the instrument.
    float _ta; ///< The tripping time; unit of the instrument.
};

} // namespace Vesmar
