#pragma once

#include "states/rcd/rcdstate.h"

namespace Vesmar
{

/// Where the machine stands when an RCD test has been chosen; it passes on at once.
///
/// Sends nothing. Left for RCD monitoring, for measurement mode when another function is to be prepared, and
/// for monitoring when measurement mode is switched off.
class RCDMeasurementModeState : public RCDState
{
public:
    RCDMeasurementModeState(StateMachineContext* context, State* parentState);
};

} // namespace Vesmar
