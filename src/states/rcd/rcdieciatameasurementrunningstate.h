#pragma once

#include <Vesmar/rcdiecsettings.h>

#include "states/rcd/rcdrunningstate.h"

namespace Vesmar
{

/// The IEC variant of the Ia/Ta test. Polls without limit while the mains voltage does not suit the test, and
/// reports 507 with each of these polls. The instrument's error 525 begins the whole test anew. Reports 200
/// for settings that name no test, and does nothing while they name the clean-up or another function.
class RCDIECIaTaMeasurementRunningState : public RCDRunningState
{
public:
    RCDIECIaTaMeasurementRunningState(StateMachineContext* context, State* parentState);

    void OnRunning() override;

private:
    void RunInMode(RCDIECSettings::RCDIECMode mode);
};

} // namespace Vesmar
