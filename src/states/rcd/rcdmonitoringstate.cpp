#include "states/rcd/rcdmonitoringstate.h"

#include <QDebug>

#include "context/statemachinecontext.h"
#include "model/settings/rcdmode.h"

namespace Vesmar
{

namespace
{

/// Begins a line that tells how far a step came. Values may follow.
QDebug Progress(const char* text)
{
    return qWarning().noquote() << QLatin1String("<<<                              ") + QLatin1String(text);
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
        Progress("RUNING RCD MONITORING STATE 5 - mesurmentState: ") << static_cast<int>(status);
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
    Progress("RUNING RCD MONITORING STATE 1 - status=")
        << GetContext()->PrepareMeasurementRequested.Get() << GetContext()->StartMeasurementRequested.Get()
        << static_cast<int>(GetContext()->MeasurementStatus.Get());
    if (GetContext()->StartMeasurementRequested.Get()) {
        Progress("RUNING RCD MONITORING STATE 2");
        return false;
    }
    const MeasurementSettings* settings = GetContext()->TestSettings.Get();
    Progress("RUNING RCD MONITORING STATE 3 - measurmentTyp=")
        << static_cast<int>(settings->GetMeasurementType());
    if (settings->GetMeasurementType() != MeasurementType::RCD) {
        return false;
    }
    Progress("RUNING RCD MONITORING STATE 4");
    return ModeOfRCD(*settings) == RCDSettings::RCDMode::UbRe;
}

} // namespace Vesmar
