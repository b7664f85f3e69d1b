#pragma once

#include "states/measurement/measurementrunningstate.h"

namespace Vesmar
{

/// Follows a function that delivers one result.
///
/// Sends status on every step, and a read when there is a new result. Sets `MeasurementStatus` to `Running`,
/// and to `Measuring` once the result was read. Reports 202 and asks for an abort when the function ends
/// without one. Left for stopping when the result is there.
class SingleMeasurementRunningState : public MeasurementRunningState
{
public:
    SingleMeasurementRunningState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;
};

} // namespace Vesmar
