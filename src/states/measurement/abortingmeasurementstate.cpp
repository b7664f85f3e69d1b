#include "states/measurement/abortingmeasurementstate.h"

#include "context/statemachinecontext.h"
#include "protocol/functionstatesets.h"

namespace Vesmar
{

AbortingMeasurementState::AbortingMeasurementState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr, "ABORTING MEASUREMENT STATE ")
{
}

void AbortingMeasurementState::OnEntry()
{
    State::OnEntry();
    _isStopAcknowledged = false;
    GetContext()->MeasurementStatus.Set(MeasurementState::Stopping);
    GetContext()->StopMeasurementTimer();
    GetContext()->IsMeasurementRunning.Set(false);
}

void AbortingMeasurementState::OnExit()
{
    State::OnExit();
    GetContext()->AbortMeasurementRequested.Set(false);
    GetContext()->MeasurementStatus.Set(MeasurementState::Stopped);
}

void AbortingMeasurementState::OnRunning()
{
    if (!RequestStatus()) {
        return;
    }
    const FunctionState state = GetContext()->MeasurementFunctionStatus.Get();
    if (IsFunctionOver(state)) {
        GetContext()->MeasurementStatus.Set(MeasurementState::Stopped);
        GetContext()->IsMeasurementRunning.Set(false);
        DropStartOfAbortedFunction();
    } else if (FunctionStateSets::Contains(FunctionStateSets::StillRunning, state)) {
        _isStopAcknowledged = StopMeasurement() || _isStopAcknowledged;
    }
}

/// A status that names no function says nothing of a function's state, which stays as it was. A function that
/// ended just before the stop would therefore be stopped for ever.
bool AbortingMeasurementState::IsFunctionOver(FunctionState state) const
{
    const bool isNoFunctionActive = GetContext()->CurrentMeasurementType.Get() == MeasurementType::Monitoring;
    return FunctionStateSets::Contains(FunctionStateSets::OverWhenAborting, state) ||
           (_isStopAcknowledged && isNoFunctionActive);
}

/// A start that was requested together with a preparation is meant for the next function, and stays.
void AbortingMeasurementState::DropStartOfAbortedFunction()
{
    if (GetContext()->StartMeasurementRequested.Get() && !GetContext()->PrepareMeasurementRequested.Get()) {
        GetContext()->StartMeasurementRequested.Set(false);
    }
}

} // namespace Vesmar
