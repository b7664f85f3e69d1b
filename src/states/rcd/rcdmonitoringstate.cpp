#include "states/rcd/rcdmonitoringstate.h"

#include <QDebug>
#include <QThread>

#include "context/statemachinecontext.h"
#include "link/transciever.h"
#include "model/settings/rcdmode.h"

namespace Vesmar
{

namespace
{

constexpr unsigned long StopPauseMs = 200;

/// A line of the protocol of each step, followed by values.
QDebug Protocol(const char* text)
{
    return qWarning().noquote() << QLatin1String("<<<                              ") + QLatin1String(text);
}

} // namespace

RCDMonitoringState::RCDMonitoringState(StateMachineContext* context, State* parentState)
    : RCDState(context, parentState, nullptr, "RCD MONITORING STATE")
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
    if (ServeAbort() && IsToBePrepared()) {
        FollowPreparation();
    }
}

/// False when the step ends with the abort.
bool RCDMonitoringState::ServeAbort()
{
    if (!GetContext()->AbortMeasurementRequested.Get()) {
        return true;
    }
    TraceBanner("RUNING RCD MONITORING STATE is abort");
    switch (GetContext()->TestSettings.Get()->GetMeasurementType()) {
    case MeasurementType::RCD:
        ServeRCDAbort();
        return false;
    case MeasurementType::RCDIEC:
        ServeRCDIECAbort();
        return true;
    default:
        return true;
    }
}

/// Without a preparation to withdraw, the abort stays pending.
void RCDMonitoringState::ServeRCDAbort()
{
    if (!GetContext()->PrepareMeasurementRequested.Get() || !StopFunction()) {
        return;
    }
    GetContext()->AbortMeasurementRequested.Set(false);
    GetContext()->MeasurementStatus.Set(MeasurementState::Unknown);
}

void RCDMonitoringState::ServeRCDIECAbort()
{
    TraceBanner("RUNING RCD MONITORING STATE rcdiec");
    GetContext()->AbortMeasurementRequested.Set(false);
    GetContext()->MeasurementStatus.Set(MeasurementState::Unknown);
    if (GetContext()->ErrorCode.Get() != Error::NoErrors) {
        TraceBanner("RUNING RCD MONITORING STATE rcdiec no error"); // Worded so, error or not.
        GetContext()->PrepareMeasurementRequested.Set(false);
    }
}

/// Only the Ub/Re test is prepared here, and only until it is started.
bool RCDMonitoringState::IsToBePrepared()
{
    Protocol("RUNING RCD MONITORING STATE 1 - status=")
        << GetContext()->PrepareMeasurementRequested.Get() << GetContext()->StartMeasurementRequested.Get()
        << static_cast<int>(GetContext()->MeasurementStatus.Get());
    if (GetContext()->StartMeasurementRequested.Get()) {
        Protocol("RUNING RCD MONITORING STATE 2");
        return false;
    }
    const MeasurementSettings* settings = GetContext()->TestSettings.Get();
    Protocol("RUNING RCD MONITORING STATE 3 - measurmentTyp=")
        << static_cast<int>(settings->GetMeasurementType());
    if (settings->GetMeasurementType() != MeasurementType::RCD) {
        return false;
    }
    Protocol("RUNING RCD MONITORING STATE 4");
    return ModeOfRCD(*settings) == RCDSettings::RCDMode::UbRe;
}

void RCDMonitoringState::FollowPreparation()
{
    const MeasurementState status = GetContext()->MeasurementStatus.Get();
    Protocol("RUNING RCD MONITORING STATE 5 - mesurmentState: ") << static_cast<int>(status);
    switch (status) {
    case MeasurementState::Unknown:
        BeginPreparation();
        break;
    case MeasurementState::Preparing:
        AwaitReadiness();
        break;
    case MeasurementState::Prepared:
        Prepare();
        break;
    case MeasurementState::Idle:
        WatchPrepared();
        break;
    default:
        break;
    }
}

void RCDMonitoringState::BeginPreparation()
{
    if (!GetContext()->PrepareMeasurementRequested.Get()) {
        return;
    }
    if (GetContext()->ErrorCode.Get() != Error::NoErrors && !StopFunction()) {
        return;
    }
    _statusAttempts = 0;
    _prepareAttempts = 0;
    _lsaapCounter = 0;
    GetContext()->MeasurementStatus.Set(MeasurementState::Preparing);
}

void RCDMonitoringState::AwaitReadiness()
{
    if (_statusAttempts >= _maxStatusAttempts) {
        GetContext()->ErrorCode.Set(Error::RCDIdleStatusAttemptsExhausted);
        GetContext()->StartTestStatus.Set(StartTestResult::Unknown);
        WithdrawPreparation();
        return;
    }
    if (AttemptStatus() == QueryResult::Data) {
        JudgeReadiness();
    }
}

void RCDMonitoringState::JudgeReadiness()
{
    const MeasurementType function = GetContext()->CurrentMeasurementType.Get();
    if (function != MeasurementType::Monitoring) {
        qWarning().noquote() << "currentMesuarment type != monitoringMode:" << static_cast<int>(function);
        GetContext()->MeasurementStatus.Set(MeasurementState::Prepared);
        return;
    }
    const bool isFaultless = GetContext()->ErrorCode.Get() == Error::NoErrors;
    qWarning().noquote() << (isFaultless ? "no Error, status:" : "Error else, status:")
                         << static_cast<int>(GetContext()->StartTestStatus.Get());
    if (isFaultless && HasPassedStartTest()) {
        GetContext()->MeasurementStatus.Set(MeasurementState::Prepared);
    } else {
        Pause();
    }
}

void RCDMonitoringState::Prepare()
{
    if (_prepareAttempts >= _maxPrepareAttempts) {
        Fail(Error::PrepareFailed);
        return;
    }
    if (AttemptPrepare() == QueryResult::Acknowledged) {
        GetContext()->MeasurementStatus.Set(MeasurementState::Idle);
        GetContext()->PrepareMeasurementRequested.Set(false);
    }
}

void RCDMonitoringState::WatchPrepared()
{
    if (_lsaapCounter > _lsaap) {
        Fail(Error::RCDPreparedStatusAttemptsExhausted);
        return;
    }
    const bool isToBePreparedAnew = GetContext()->PrepareMeasurementRequested.Get();
    Error error = Error::NoErrors;
    const int result = RequestRCDStatus(_requestTimeout, &error);
    if (result == QueryResult::Data) {
        _lsaapCounter = 0;
        JudgePrepared(error);
    } else if (IsRetryable(result)) {
        ++_lsaapCounter;
        Pause();
    } else if (result == QueryResult::NoResponse) {
        ++_lsaapCounter;
    }
    if (isToBePreparedAnew) {
        GetContext()->MeasurementStatus.Set(MeasurementState::Unknown);
    }
}

void RCDMonitoringState::JudgePrepared(Error error)
{
    if (GetContext()->CurrentMeasurementType.Get() != MeasurementType::RCD) {
        Fail(Error::RCDFunctionMismatch);
    } else if (error != Error::NoErrors) {
        Fail(error);
    } else {
        FollowFunction();
    }
}

void RCDMonitoringState::FollowFunction()
{
    switch (GetContext()->MeasurementFunctionStatus.Get()) {
    case FunctionState::PrepareError:
        if (GetContext()->NewMeasurement.Get()) {
            RequestRCDCheckObjectError(_requestTimeout);
        }
        break;
    case FunctionState::Prepared:
        GetContext()->ErrorCode.Set(Error::NoErrors);
        Pause();
        break;
    case FunctionState::Completed:
        Pause();
        break;
    default:
        break;
    }
}

/// Stops whatever function is active. False when a request failed; it goes on in a later step then.
bool RCDMonitoringState::StopFunction()
{
    while (GetContext()->CurrentMeasurementType.Get() != MeasurementType::Monitoring) {
        if (!StopMeasurement()) {
            return false;
        }
        for (int poll = 0; poll < 2; ++poll) {
            QThread::msleep(StopPauseMs);
            if (!RequestStatus()) {
                return false;
            }
        }
    }
    return true;
}

void RCDMonitoringState::Fail(Error error)
{
    GetContext()->ErrorCode.Set(error);
    WithdrawPreparation();
}

/// The application has to ask anew.
void RCDMonitoringState::WithdrawPreparation()
{
    GetContext()->PrepareMeasurementRequested.Set(false);
    GetContext()->MeasurementStatus.Set(MeasurementState::Unknown);
}

} // namespace Vesmar
