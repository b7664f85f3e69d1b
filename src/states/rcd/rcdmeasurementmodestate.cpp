#include "states/rcd/rcdmeasurementmodestate.h"

namespace Vesmar
{

RCDMeasurementModeState::RCDMeasurementModeState(StateMachineContext* context, State* parentState)
    : RCDState(context, parentState, nullptr, "RCD MEASUREMENT MODE STATE ")
{
}

} // namespace Vesmar
