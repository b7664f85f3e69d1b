#pragma once

#include "states/rcd/rcdstate.h"

namespace Vesmar
{

/// The parent of all states of an RCD test.
///
/// Sends nothing. Left at once for RCD monitoring, unless another function is to be prepared (for measurement
/// mode) or measurement mode is switched off (for monitoring).
class RCDMeasurementModeState : public RCDState
{
public:
    RCDMeasurementModeState(StateMachineContext* context, State* parentState);
};

} // namespace Vesmar
