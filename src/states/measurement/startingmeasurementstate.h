#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Starts the prepared function and waits until the instrument runs it.
///
/// Sends status on every step, and start once for each request, unless an abort is pending. Clears
/// `StartMeasurementRequested`. Sets `MeasurementStatus` to `Starting` and then `Running`, and
/// `IsMeasurementRunning`. Reports 201 when the instrument reports an error of the function, 202 when it goes
/// back from starting to prepared, and requests an abort with either. Left for the running state of the
/// function's kind.
class StartingMeasurementState : public State
{
public:
    StartingMeasurementState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnExit() override;
    void OnRunning() override;

private:
    void Start();
    void WatchStart();
    void Abort(Error error);

    bool _isFunctionStarted = false; ///< The instrument reported the function starting during this visit.
};

} // namespace Vesmar
