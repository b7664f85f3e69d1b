#pragma once

#include "states/rcd/rcdrunningstate.h"

namespace Vesmar
{

/// The Ia/Ta test, of either kind. A test that stays silent is started again. Reports 200 for RCD settings
/// that name another test, and does nothing while the settings are those of another function.
class RCDIaTaMeasurementRunningState : public RCDRunningState
{
public:
    RCDIaTaMeasurementRunningState(StateMachineContext* context, State* parentState);

    void OnRunning() override;
};

} // namespace Vesmar
