#include "states/rcd/rcdieciatameasurementrunningstate.h"

#include "context/statemachinecontext.h"
#include "link/trace.h"
#include "model/settings/rcdmode.h"

namespace Vesmar
{

RCDIECIaTaMeasurementRunningState::RCDIECIaTaMeasurementRunningState(StateMachineContext* context,
                                                                     State* parentState)
    : RCDIECRunningState(context, parentState, nullptr, "RCD IEC IaTa MEASUREMENT STATE ")
{
}

void RCDIECIaTaMeasurementRunningState::OnEntry()
{
    State::OnEntry();
    BeginIECRun();
    GetContext()->IsMeasurementRunning.Set(true);
}

void RCDIECIaTaMeasurementRunningState::OnExit()
{
    State::OnExit();
    GetContext()->IsMeasurementRunning.Set(false);
}

void RCDIECIaTaMeasurementRunningState::OnRunning()
{
    TraceBanner("RUNNING RCD IEC IaTa MEASUREMENT IN ");
    RunTest();
    TraceBanner("RUNNING RCD IEC IaTa MEASUREMENT OUT");
}

void RCDIECIaTaMeasurementRunningState::RunTest()
{
    const auto mode = ModeOfRCDIEC(*GetContext()->TestSettings.Get());
    if (!mode) {
        return;
    }
    switch (*mode) {
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

/// The first two phases come in black.
void RCDIECIaTaMeasurementRunningState::TracePhase(MeasurementState phase) const
{
    if (phase == MeasurementState::Idle || phase == MeasurementState::Preparing) {
        Trace::WriteIn(Trace::Colour::Black, QStringLiteral("       ") + QLatin1String(PhaseName(phase)));
    } else {
        TraceGreen(PhaseName(phase));
    }
}

bool RCDIECIaTaMeasurementRunningState::DoesPollCount() const
{
    return _savedCheckObjectError != Error::RCDCheckObjectULNIECInvalid;
}

void RCDIECIaTaMeasurementRunningState::AfterOtherStatus()
{
    Pause();
}

void RCDIECIaTaMeasurementRunningState::OnObjectError()
{
    if (_savedCheckObjectError == Error::RCDCheckObjectULNIECInvalid) {
        TraceGreen("PREPARED raport: RCD_CheckObject_ULNIECInvalid");
        ReportError(Error::RCDCheckObjectULNIECInvalid);
    } else {
        Pause();
    }
}

void RCDIECIaTaMeasurementRunningState::OnTerminated()
{
    if (GetContext()->ErrorCode.Get() == Error::RCDDeviceError5) {
        GetContext()->ErrorCode.Set(Error::NoErrors);
        SetPhase(MeasurementState::Idle);
    } else {
        RCDIECRunningState::OnTerminated();
    }
}

} // namespace Vesmar
