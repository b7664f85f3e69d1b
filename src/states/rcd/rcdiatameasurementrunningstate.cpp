#include "states/rcd/rcdiatameasurementrunningstate.h"

#include "context/statemachinecontext.h"
#include "model/settings/rcdmode.h"

namespace Vesmar
{

RCDIaTaMeasurementRunningState::RCDIaTaMeasurementRunningState(StateMachineContext* context,
                                                               State* parentState)
    : RCDRunningState(context, parentState, nullptr, "RCD IaTa MEASUREMENT STATE ")
{
}

void RCDIaTaMeasurementRunningState::OnEntry()
{
    State::OnEntry();
    BeginRun();
    GetContext()->IsMeasurementRunning.Set(true);
}

void RCDIaTaMeasurementRunningState::OnExit()
{
    State::OnExit();
    GetContext()->IsMeasurementRunning.Set(false);
}

void RCDIaTaMeasurementRunningState::OnRunning()
{
    const auto mode = ModeOfRCD(*GetContext()->TestSettings.Get());
    if (!mode) {
        return;
    }
    switch (*mode) {
    case RCDSettings::RCDMode::IaTa1:
    case RCDSettings::RCDMode::IaTa2:
        RunPhase();
        break;
    default:
        Fail(Error::PrepareFailed);
        break;
    }
}

void RCDIaTaMeasurementRunningState::AfterOtherStatus()
{
    Pause();
}

} // namespace Vesmar
