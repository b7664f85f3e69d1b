#pragma once

#include "states/rcd/rcdrunningstate.h"

namespace Vesmar
{

/// The Ub/Re test. A test that stays silent ends at once, with 520. While an abort is pending, it neither
/// starts nor waits for results. Does nothing while the settings name another test.
class RCDUbReMeasurementRunningState : public RCDRunningState
{
public:
    RCDUbReMeasurementRunningState(StateMachineContext* context, State* parentState);

    void OnRunning() override;
};

} // namespace Vesmar
