#pragma once

#include "states/rcd/rcdrunningstate.h"

namespace Vesmar
{

/// The Ia/Ta test, of either kind. A test that stays silent is started again. Reports 200 for settings that
/// name another test.
class RCDIaTaMeasurementRunningState : public RCDRunningState
{
public:
    RCDIaTaMeasurementRunningState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnExit() override;
    void OnRunning() override;

protected:
    void AfterOtherStatus() override;
};

} // namespace Vesmar
