#pragma once

#include <Vesmar/measurementresults.h>

namespace Vesmar
{

/// Reading of the touch current measurement.
class VESMAR_EXPORT ITResults : public MeasurementResults
{
public:
    explicit ITResults(float current);
    ~ITResults() override;

    float _current; ///< Touch current; the unit is the instrument's own and unknown.
};

} // namespace Vesmar
