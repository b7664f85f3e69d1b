#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Ends an abandoned measurement on the instrument.
///
/// Sends status on every step, and stop while the function still runs. Stops the measurement timer and clears
/// `IsMeasurementRunning`. Sets `MeasurementStatus` to `Stopping`, then `Stopped` when the instrument reports
/// the function over, and drops a start that arrived for it, which leaves the state for measurement mode.
/// Clears `AbortMeasurementRequested` on exit.
class AbortingMeasurementState : public State
{
public:
    AbortingMeasurementState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnExit() override;
    void OnRunning() override;

private:
    void DropStartOfAbortedFunction();
};

} // namespace Vesmar
