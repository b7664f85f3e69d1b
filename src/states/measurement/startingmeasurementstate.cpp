#include "states/measurement/startingmeasurementstate.h"

#include "context/statemachinecontext.h"
#include "link/traceline.h"
#include "protocol/functionstatesets.h"

namespace Vesmar
{

StartingMeasurementState::StartingMeasurementState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr, "STARTING MEASUREMENT STATE ")
{
}

void StartingMeasurementState::OnEntry()
{
    State::OnEntry();
    _isFunctionStarted = false;
    GetContext()->MeasurementStatus.Set(MeasurementState::Starting);
}

void StartingMeasurementState::OnExit()
{
    State::OnExit();
    _isFunctionStarted = false;
}

void StartingMeasurementState::OnRunning()
{
    Trace::Line() << "StartingMeasurementState::OnRunning() IN";
    RequestStatus();
    if (GetContext()->StartMeasurementRequested.Get() && !GetContext()->AbortMeasurementRequested.Get()) {
        Start();
    }
    WatchStart();
    Trace::Line() << "StartingMeasurementState::OnRunning() OUT";
}

void StartingMeasurementState::Start()
{
    StartMeasurement();
    GetContext()->StartMeasurementRequested.Set(false);
}

void StartingMeasurementState::WatchStart()
{
    const FunctionState state = GetContext()->MeasurementFunctionStatus.Get();
    const Error error = FunctionStateSets::ErrorWhenStarting(state, _isFunctionStarted);
    if (error != Error::NoErrors) {
        Abort(error);
        return;
    }
    switch (state) {
    case FunctionState::Idle:
    case FunctionState::Completed:
        // The function ran and finished within one status period.
        if (_isFunctionStarted && GetContext()->NewMeasurement.Get()) {
            _isFunctionStarted = false;
            GetContext()->MeasurementStatus.Set(MeasurementState::Running);
        }
        break;
    case FunctionState::Starting:
        _isFunctionStarted = true;
        break;
    case FunctionState::Running:
    case FunctionState::Stopping:
    case FunctionState::Terminated:
        _isFunctionStarted = false;
        GetContext()->MeasurementStatus.Set(MeasurementState::Running);
        GetContext()->IsMeasurementRunning.Set(true);
        break;
    default:
        break;
    }
}

void StartingMeasurementState::Abort(Error error)
{
    ReportError(error);
    GetContext()->AbortMeasurementRequested.Set(true);
}

} // namespace Vesmar
