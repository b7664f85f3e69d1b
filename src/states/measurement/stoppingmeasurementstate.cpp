#include "states/measurement/stoppingmeasurementstate.h"

#include "context/statemachinecontext.h"
#include "protocol/functionstatesets.h"

namespace Vesmar
{

StoppingMeasurementState::StoppingMeasurementState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr)
{
}

void StoppingMeasurementState::OnEntry()
{
    TraceBanner("ENTERING STOPPING MEASUREMENT STATE ");
    GetContext()->MeasurementStatus.Set(MeasurementState::Stopping);
    GetContext()->StopMeasurementTimer();
}

void StoppingMeasurementState::OnExit()
{
    TraceBanner("LEAVING STOPPING MEASUREMENT STATE ");
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
