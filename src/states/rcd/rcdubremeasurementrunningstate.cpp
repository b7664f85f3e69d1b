#include "states/rcd/rcdubremeasurementrunningstate.h"

#include "context/statemachinecontext.h"
#include "model/settings/rcdmode.h"

namespace Vesmar
{

RCDUbReMeasurementRunningState::RCDUbReMeasurementRunningState(StateMachineContext* context,
                                                               State* parentState)
    : RCDRunningState(context, parentState, RCDRun::UbRe, "RCD UbRe MEASUREMENT STATE ")
{
}

void RCDUbReMeasurementRunningState::OnRunning()
{
    TraceBanner("RUNING RCD UbRe MEASUREMENT STATE IN");
    if (ModeOfRCD(*GetContext()->TestSettings.Get()) == RCDSettings::RCDMode::UbRe) {
        RunPhase();
    }
    TraceBanner("RUNING RCD UbRe MEASUREMENT STATE OUT");
}

} // namespace Vesmar
