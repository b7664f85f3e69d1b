#pragma once

#include "states/rcd/rcdrunningstate.h"

namespace Vesmar
{

/// The instrument's clean-up cycle, which is prepared and started like a test but has no results: it is over
/// for the library once it is started. While something is wrong with the object under test, it polls without
/// limit. Does nothing while the settings name a test.
class RCDIECCleanUpState : public RCDRunningState
{
public:
    RCDIECCleanUpState(StateMachineContext* context, State* parentState);

    void OnRunning() override;
};

} // namespace Vesmar
