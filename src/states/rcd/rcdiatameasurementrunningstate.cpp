#include "states/rcd/rcdiatameasurementrunningstate.h"

#include <Vesmar/rcdsettings.h>

#include "context/statemachinecontext.h"

namespace Vesmar
{

RCDIaTaMeasurementRunningState::RCDIaTaMeasurementRunningState(StateMachineContext* context,
                                                               State* parentState)
    : RCDRunningState(context, parentState, nullptr)
{
}

void RCDIaTaMeasurementRunningState::OnEntry()
{
    TraceBanner("ENTERING RCD IaTa MEASUREMENT STATE ");
    BeginRun();
    GetContext()->IsMeasurementRunning.Set(true);
}

void RCDIaTaMeasurementRunningState::OnExit()
{
    TraceBanner("LEAVING RCD IaTa MEASUREMENT STATE ");
    GetContext()->IsMeasurementRunning.Set(false);
}

void RCDIaTaMeasurementRunningState::OnRunning()
{
    const MeasurementSettings* settings = GetContext()->TestSettings.Get();
    if (settings->GetMeasurementType() != MeasurementType::RCD) {
        return;
    }
    switch (static_cast<const RCDSettings*>(settings)->GetMode()) {
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
