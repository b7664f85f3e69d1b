#pragma once

#include "states/measurement/measurementrunningstate.h"

namespace Vesmar
{

/// Polls a function that delivers results until its time has elapsed.
///
/// Starts the measurement timer with the settings' time. Sends status on every step, and a read when there is
/// a new result. Sets `MeasurementStatus` to `Measuring`. Reports 202 and requests an abort when the
/// function ends by itself. Left for stopping when the time has elapsed.
class ContinuousMeasurementRunningState : public MeasurementRunningState
{
public:
    ContinuousMeasurementRunningState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;
};

} // namespace Vesmar
