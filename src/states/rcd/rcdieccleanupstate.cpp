#include "states/rcd/rcdieccleanupstate.h"

#include "context/statemachinecontext.h"
#include "model/settings/rcdmode.h"

namespace Vesmar
{

RCDIECCleanUpState::RCDIECCleanUpState(StateMachineContext* context, State* parentState)
    : RCDRunningState(context, parentState, RCDRun::CleanUp, "RCD IEC CleanUp STATE ")
{
}

void RCDIECCleanUpState::OnRunning()
{
    TraceBanner("RUNING RCD IEC CleanUp STATE IN");
    if (ModeOfRCDIEC(*GetContext()->TestSettings.Get()) == RCDIECSettings::RCDIECMode::CleanUp) {
        RunPhase();
    }
    TraceBanner("RUNING RCD IEC CleanUp STATE OUT");
}

} // namespace Vesmar
