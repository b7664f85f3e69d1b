#include "states/rcd/rcdubremeasurementrunningstate.h"

#include "context/statemachinecontext.h"
#include "model/settings/rcdmode.h"

namespace Vesmar
{

RCDUbReMeasurementRunningState::RCDUbReMeasurementRunningState(StateMachineContext* context,
                                                               State* parentState)
    : RCDRunningState(context, parentState, nullptr, "RCD UbRe MEASUREMENT STATE ")
{
}

void RCDUbReMeasurementRunningState::OnEntry()
{
    State::OnEntry();
    BeginRun();
}

void RCDUbReMeasurementRunningState::OnExit()
{
    State::OnExit();
    GetContext()->IsMeasurementRunning.Set(false);
}

void RCDUbReMeasurementRunningState::OnRunning()
{
    TraceBanner("RUNING RCD UbRe MEASUREMENT STATE IN");
    if (ModeOfRCD(*GetContext()->TestSettings.Get()) == RCDSettings::RCDMode::UbRe) {
        RunPhase();
    }
    TraceBanner("RUNING RCD UbRe MEASUREMENT STATE OUT");
}

void RCDUbReMeasurementRunningState::TracePhase(MeasurementState phase) const
{
    TraceGreen(PhaseName(phase));
}

void RCDUbReMeasurementRunningState::AfterIdleStatus()
{
    Pause();
}

void RCDUbReMeasurementRunningState::AfterPrepared()
{
    Pause();
}

bool RCDUbReMeasurementRunningState::MayStart() const
{
    return !GetContext()->AbortMeasurementRequested.Get();
}

void RCDUbReMeasurementRunningState::RunMeasuring()
{
    if (GetContext()->AbortMeasurementRequested.Get()) {
        return;
    }
    GetContext()->IsMeasurementRunning.Set(true);
    RCDRunningState::RunMeasuring();
}

bool RCDUbReMeasurementRunningState::AwaitTestResults(bool* received)
{
    return AwaitUbReResults(_resultTimeout, received);
}

void RCDUbReMeasurementRunningState::OnSilence()
{
    _startAttempts = _maxStartAttempts;
    Fail(Error::RCDDeviceError0);
}

} // namespace Vesmar
