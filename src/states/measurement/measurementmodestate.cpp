#include "states/measurement/measurementmodestate.h"

#include "context/statemachinecontext.h"

namespace Vesmar
{

MeasurementModeState::MeasurementModeState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr)
{
}

void MeasurementModeState::OnEntry()
{
    TraceBanner("ENTERING MEASUREMENT MODE STATE ");
    GetContext()->IsMeasurementRunning.Set(false);
    GetContext()->AbortMeasurementRequested.Set(false);
}

void MeasurementModeState::OnExit()
{
    TraceBanner("LEAVING MEASUREMENT MODE STATE ");
}

} // namespace Vesmar
