#include "states/rcd/rcdieciatameasurementrunningstate.h"

#include "context/statemachinecontext.h"
#include "model/settings/rcdmode.h"

namespace Vesmar
{

RCDIECIaTaMeasurementRunningState::RCDIECIaTaMeasurementRunningState(StateMachineContext* context,
                                                                     State* parentState)
    : RCDRunningState(context, parentState, RCDRun::IECIaTa, "RCD IEC IaTa MEASUREMENT STATE ")
{
}

void RCDIECIaTaMeasurementRunningState::OnRunning()
{
    TraceBanner("RUNNING RCD IEC IaTa MEASUREMENT IN ");
    if (const auto mode = ModeOfRCDIEC(*GetContext()->TestSettings.Get())) {
        RunInMode(*mode);
    }
    TraceBanner("RUNNING RCD IEC IaTa MEASUREMENT OUT");
}

void RCDIECIaTaMeasurementRunningState::RunInMode(RCDIECSettings::RCDIECMode mode)
{
    switch (mode) {
    case RCDIECSettings::RCDIECMode::IaTa1:
    case RCDIECSettings::RCDIECMode::IaTa2:
        RunPhase();
        break;
    case RCDIECSettings::RCDIECMode::CleanUp:
        break;
    default:
        Fail(Error::PrepareFailed);
        break;
    }
}

} // namespace Vesmar
