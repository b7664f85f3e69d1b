#pragma once

#include <Vesmar/functionstate.h>

#include "states/state.h"

namespace Vesmar
{

/// Ends an abandoned measurement on the instrument.
///
/// Sends status on every step, and stop while the function still runs. Stops the measurement timer, clears
/// `IsMeasurementRunning` and sets `MeasurementStatus` to `Stopping` on entry. When the instrument reports
/// the function over, or after an acknowledged stop no function at all, sets `MeasurementStatus` to `Stopped`
/// and withdraws a start that was requested for the function. Clears `AbortMeasurementRequested` on exit.
/// Left for measurement mode when the function is over.
class AbortingMeasurementState : public State
{
public:
    AbortingMeasurementState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnExit() override;
    void OnRunning() override;

private:
    bool IsFunctionOver(FunctionState state) const;
    void DropStartOfAbortedFunction();

    bool _isStopAcknowledged = false; ///< A stop of this visit was.
};

} // namespace Vesmar
