#include "states/rcd/rcdiatameasurementrunningstate.h"

#include "context/statemachinecontext.h"
#include "model/settings/rcdmode.h"

namespace Vesmar
{

RCDIaTaMeasurementRunningState::RCDIaTaMeasurementRunningState(StateMachineContext* context,
                                                               State* parentState)
    : RCDRunningState(context, parentState, RCDRun::IaTa, "RCD IaTa MEASUREMENT STATE ")
{
}

void RCDIaTaMeasurementRunningState::OnRunning()
{
    const auto mode = ModeOfRCD(*GetContext()->TestSettings.Get());
    if (!mode) {
        return;
    }
    if (*mode == RCDSettings::RCDMode::IaTa1 || *mode == RCDSettings::RCDMode::IaTa2) {
        RunPhase();
    } else {
        Fail(Error::PrepareFailed);
    }
}

} // namespace Vesmar
