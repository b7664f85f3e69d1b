#include "states/measurement/measurementmodestate.h"

#include "context/statemachinecontext.h"

namespace Vesmar
{

MeasurementModeState::MeasurementModeState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr, "MEASUREMENT MODE STATE ")
{
}

void MeasurementModeState::OnEntry()
{
    State::OnEntry();
    GetContext()->IsMeasurementRunning.Set(false);
    GetContext()->AbortMeasurementRequested.Set(false);
}

} // namespace Vesmar
