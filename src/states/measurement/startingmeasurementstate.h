#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Starts the prepared function and waits until the instrument runs it.
///
/// Sends status on every step, and start once for each request, unless an abort is pending. Clears
/// `StartMeasurementRequested`. Sets `MeasurementStatus` to `Starting` and then `Running`, and
/// `IsMeasurementRunning`. Reports 201 or 202 and asks for an abort when the instrument does not start the
/// function or drops it. Left for the running state of the function's kind.
class StartingMeasurementState : public State
{
public:
    StartingMeasurementState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnExit() override;
    void OnRunning() override;

private:
    void Start();
    void FollowStart();
    void Abort(Error error);

    bool _isFunctionStarted = false; ///< The instrument reported the function starting during this visit.
};

} // namespace Vesmar
