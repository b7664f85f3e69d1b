#include "states/rcd/rcdmonitoringstate.h"

#include "context/statemachinecontext.h"
#include "link/traceline.h"
#include "model/settings/rcdmode.h"

namespace Vesmar
{

namespace
{

/// What a line begins with that tells how far a step came.
constexpr const char* Progress = "<<<                              RUNING RCD MONITORING STATE ";

const char* Word(bool value)
{
    return value ? "true" : "false";
}

} // namespace

RCDMonitoringState::RCDMonitoringState(StateMachineContext* context, State* parentState)
    : RCDUbRePreparation(context, parentState, "RCD MONITORING STATE")
{
}

void RCDMonitoringState::OnEntry()
{
    State::OnEntry();
    GetContext()->MeasurementStatus.Set(MeasurementState::Unknown);
    ResetAttempts();
}

void RCDMonitoringState::OnRunning()
{
    TraceBanner("RUNING RCD MONITORING STATE");
    if (!EndsWithAbort() && IsToBePrepared()) {
        const MeasurementState status = GetContext()->MeasurementStatus.Get();
        Trace::Line() << Progress << "5 - mesurmentState:  " << static_cast<int>(status);
        ContinuePreparation(status);
    }
}

/// Answers a pending abort. True when the step ends with it.
bool RCDMonitoringState::EndsWithAbort()
{
    if (!GetContext()->AbortMeasurementRequested.Get()) {
        return false;
    }
    TraceBanner("RUNING RCD MONITORING STATE is abort");
    const MeasurementType function = GetContext()->TestSettings.Get()->GetMeasurementType();
    if (function == MeasurementType::RCD) {
        AbortRCD();
    } else if (function == MeasurementType::RCDIEC) {
        AbortRCDIEC();
    }
    return function == MeasurementType::RCD;
}

/// An abort stays pending when nobody has asked for a preparation.
void RCDMonitoringState::AbortRCD()
{
    if (!GetContext()->PrepareMeasurementRequested.Get() || !StopFunction()) {
        return;
    }
    GetContext()->AbortMeasurementRequested.Set(false);
    GetContext()->MeasurementStatus.Set(MeasurementState::Unknown);
}

void RCDMonitoringState::AbortRCDIEC()
{
    TraceBanner("RUNING RCD MONITORING STATE rcdiec");
    GetContext()->AbortMeasurementRequested.Set(false);
    GetContext()->MeasurementStatus.Set(MeasurementState::Unknown);
    if (GetContext()->ErrorCode.Get() != Error::NoErrors) {
        TraceBanner("RUNING RCD MONITORING STATE rcdiec no error"); // Worded so although there is one.
        GetContext()->PrepareMeasurementRequested.Set(false);
    }
}

/// Only the Ub/Re test is prepared here, and only until it is started.
bool RCDMonitoringState::IsToBePrepared()
{
    Trace::Line() << Progress << "1 - status= " << Word(GetContext()->PrepareMeasurementRequested.Get())
                  << " " << Word(GetContext()->StartMeasurementRequested.Get()) << " "
                  << static_cast<int>(GetContext()->MeasurementStatus.Get());
    if (GetContext()->StartMeasurementRequested.Get()) {
        Trace::Line() << Progress << "2";
        return false;
    }
    const MeasurementSettings* settings = GetContext()->TestSettings.Get();
    Trace::Line() << Progress << "3 - measurmentTyp= " << static_cast<int>(settings->GetMeasurementType());
    if (settings->GetMeasurementType() != MeasurementType::RCD) {
        return false;
    }
    Trace::Line() << Progress << "4";
    return ModeOfRCD(*settings) == RCDSettings::RCDMode::UbRe;
}

} // namespace Vesmar
