#include "client/measuring/measuredresults.h"

namespace VesmarClient
{

using Vesmar::MeasurementResults;
using Vesmar::MeasurementType;

MeasuredResults::MeasuredResults(const Vesmar::Tester& tester) : _tester(tester), _seen(tester.TestResults())
{
}

/// Results that are read while another function is active only look like results of this one. The tests of
/// residual-current devices send theirs by themselves, and the status may not show them any more.
MeasurementResults* MeasuredResults::Accept(MeasurementType function, MeasurementType active)
{
    MeasurementResults* const results = _tester.TestResults();
    if (results == _seen || results->GetMeasurementType() != function) {
        return nullptr;
    }
    _seen = results;
    const bool isSentUnasked = function == MeasurementType::RCD || function == MeasurementType::RCDIEC;
    return isSentUnasked || _tester.CurrentMeasurementType() == active ? results : nullptr;
}

} // namespace VesmarClient
