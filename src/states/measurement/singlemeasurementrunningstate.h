#pragma once

#include "states/measurement/measurementrunningstate.h"

namespace Vesmar
{

/// Polls a function that delivers one result.
///
/// Sends status on every step, and a read when there is a new result. Sets `MeasurementStatus` to `Running`,
/// and to `Measuring` once the result was read. Reports 202 and requests an abort when the function ends
/// without a result. Left for stopping when the result was read.
class SingleMeasurementRunningState : public MeasurementRunningState
{
public:
    SingleMeasurementRunningState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;
};

} // namespace Vesmar
