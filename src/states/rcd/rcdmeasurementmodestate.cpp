#include "states/rcd/rcdmeasurementmodestate.h"

namespace Vesmar
{

RCDMeasurementModeState::RCDMeasurementModeState(StateMachineContext* context, State* parentState)
    : RCDState(context, parentState, nullptr)
{
}

void RCDMeasurementModeState::OnEntry()
{
    TraceBanner("ENTERING RCD MEASUREMENT MODE STATE ");
}

void RCDMeasurementModeState::OnExit()
{
    TraceBanner("LEAVING RCD MEASUREMENT MODE STATE ");
}

} // namespace Vesmar
