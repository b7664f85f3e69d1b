#include "states/measurement/stoppingmeasurementstate.h"

#include "context/statemachinecontext.h"
#include "protocol/functionstatesets.h"

namespace Vesmar
{

StoppingMeasurementState::StoppingMeasurementState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr, "STOPPING MEASUREMENT STATE ")
{
}

void StoppingMeasurementState::OnEntry()
{
    State::OnEntry();
    GetContext()->MeasurementStatus.Set(MeasurementState::Stopping);
    GetContext()->StopMeasurementTimer();
}

void StoppingMeasurementState::OnRunning()
{
    if (!RequestStatus()) {
        return;
    }
    const FunctionState state = GetContext()->MeasurementFunctionStatus.Get();
    if (FunctionStateSets::Contains(FunctionStateSets::OverWhenStopping, state)) {
        GetContext()->MeasurementStatus.Set(MeasurementState::Stopped);
        GetContext()->IsMeasurementRunning.Set(false);
    } else if (FunctionStateSets::Contains(FunctionStateSets::StillRunning, state)) {
        StopMeasurement();
    }
}

} // namespace Vesmar
