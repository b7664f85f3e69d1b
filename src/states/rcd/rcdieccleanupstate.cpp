#include "states/rcd/rcdieccleanupstate.h"

#include <QDebug>

#include "context/statemachinecontext.h"
#include "model/settings/rcdmode.h"

namespace Vesmar
{

RCDIECCleanUpState::RCDIECCleanUpState(StateMachineContext* context, State* parentState)
    : RCDIECRunningState(context, parentState, nullptr, "RCD IEC CleanUp STATE ")
{
}

void RCDIECCleanUpState::OnEntry()
{
    State::OnEntry();
    BeginIECRun();
}

void RCDIECCleanUpState::OnRunning()
{
    TraceBanner("RUNING RCD IEC CleanUp STATE IN");
    if (ModeOfRCDIEC(*GetContext()->TestSettings.Get()) == RCDIECSettings::RCDIECMode::CleanUp) {
        RunPhase();
    }
    TraceBanner("RUNING RCD IEC CleanUp STATE OUT");
}

void RCDIECCleanUpState::TracePhase(MeasurementState phase) const
{
    switch (phase) {
    case MeasurementState::Unknown:
        qWarning("<<< MeasurementState::Unknown...");
        break;
    case MeasurementState::Idle:
        qWarning("<<< MeasurementState::Idle");
        break;
    case MeasurementState::Preparing:
        qWarning("<<< MeasurementState::Preparing");
        break;
    case MeasurementState::Measuring:
    case MeasurementState::Stopping:
        qWarning("<<< MeasurementState::Starting..."); // Named so.
        break;
    case MeasurementState::Stopped:
        qWarning("<<< MeasurementState::Stopped...");
        break;
    default:
        break;
    }
}

/// Only those that follow no object error, so that such an error is polled without limit.
bool RCDIECCleanUpState::DoesPollCount() const
{
    return _savedCheckObjectError == Error::NoErrors;
}

void RCDIECCleanUpState::BeforePoll()
{
    qWarning("<<< MeasurementState::Prepared: _lsaapCounter=%d _lsaap=%d", _lsaapCounter, _lsaap);
}

void RCDIECCleanUpState::AfterPoll(int result)
{
    qWarning("<<< MeasurementState::Prepared: operationResult=%d", result);
    if (DoesPollCount()) {
        qWarning("<<< MeasurementState::Prepared: _savedCheckObjectError==Error::NoErrors");
    }
}

void RCDIECCleanUpState::AfterPrepared()
{
    GetContext()->ErrorCode.Set(Error::NoErrors);
    Pause();
}

void RCDIECCleanUpState::RunMeasuring()
{
    if (GetContext()->MeasurementStatus.Get() == MeasurementState::Running) {
        SetPhase(MeasurementState::Stopped);
    }
}

} // namespace Vesmar
