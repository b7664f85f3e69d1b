#include "states/rcd/rcdrunningstate.h"

#include "context/statemachinecontext.h"
#include "link/trace.h"
#include "link/transciever.h"

namespace Vesmar
{

void RCDRunningState::BeginRun()
{
    SetPhase(MeasurementState::Idle);
    GetContext()->PrepareMeasurementRequested.Set(false);
    GetContext()->StartMeasurementRequested.Set(false);
    ResetAttempts();
}

void RCDRunningState::RunPhase()
{
    const MeasurementState phase = GetContext()->MeasurementStatus.Get();
    TracePhase(phase);
    switch (phase) {
    case MeasurementState::Idle:
        RunIdle();
        break;
    case MeasurementState::Preparing:
        RunPreparing();
        break;
    case MeasurementState::Prepared:
        RunPrepared();
        break;
    case MeasurementState::Starting:
        RunStarting();
        break;
    case MeasurementState::Running:
    case MeasurementState::Measuring:
        RunMeasuring();
        break;
    case MeasurementState::Stopping:
    case MeasurementState::Stopped:
        GetContext()->IsMeasurementRunning.Set(false);
        break;
    case MeasurementState::Unknown:
        break;
    }
}

void RCDRunningState::TracePhase(MeasurementState /*phase*/) const {}

void RCDRunningState::RunIdle()
{
    if (_statusAttempts >= _maxStatusAttempts) {
        Fail(Error::RCDIdleStatusAttemptsExhausted);
        return;
    }
    if (AttemptStatus() == QueryResult::Data) {
        JudgeIdle();
        AfterIdleStatus();
    }
}

void RCDRunningState::JudgeIdle()
{
    const bool isFunctionActive = GetContext()->CurrentMeasurementType.Get() != MeasurementType::Monitoring;
    if (!isFunctionActive && GetContext()->ErrorCode.Get() != Error::NoErrors) {
        SetPhase(MeasurementState::Stopped);
    } else if (isFunctionActive || HasPassedStartTest()) {
        SetPhase(MeasurementState::Preparing);
    }
}

void RCDRunningState::AfterIdleStatus() {}

void RCDRunningState::RunPreparing()
{
    if (_prepareAttempts >= _maxPrepareAttempts) {
        Fail(Error::PrepareFailed);
        return;
    }
    if (AttemptPrepare() == QueryResult::Acknowledged) {
        AfterPrepare();
        SetPhase(MeasurementState::Prepared);
    }
}

void RCDRunningState::AfterPrepare() {}

void RCDRunningState::RunPrepared()
{
    GetContext()->PrepareMeasurementRequested.Set(false);
    if (_lsaapCounter >= _lsaap) {
        Fail(Error::RCDPreparedStatusAttemptsExhausted);
        return;
    }
    const int result = RequestRCDStatus(_requestTimeout);
    ++_lsaapCounter;
    PauseIfRetryable(result);
    if (result != QueryResult::Data) {
        return;
    }
    if (GetContext()->CurrentMeasurementType.Get() != MeasurementType::RCD) {
        Fail(Error::RCDFunctionMismatch);
    } else if (GetContext()->ErrorCode.Get() != Error::NoErrors) {
        SetPhase(MeasurementState::Stopped);
    } else {
        FollowFunction();
    }
}

void RCDRunningState::FollowFunction()
{
    const FunctionState function = GetContext()->MeasurementFunctionStatus.Get();
    if (function == FunctionState::Prepared) {
        SetPhase(MeasurementState::Starting);
        AfterPrepared();
    } else if (function == FunctionState::PrepareError && GetContext()->NewMeasurement.Get()) {
        CheckObject();
    } else {
        AfterOtherStatus();
    }
}

void RCDRunningState::AfterPrepared() {}

void RCDRunningState::AfterOtherStatus() {}

/// A prepare error without anything wrong with the object is none. No answer is no proof of that.
void RCDRunningState::CheckObject()
{
    Error error = Error::RCDCheckObjectFailed;
    const int result = RequestRCDCheckObjectError(_requestTimeout, &error);
    PauseIfRetryable(result);
    if (error == Error::NoErrors) {
        SetPhase(MeasurementState::Starting);
    }
}

void RCDRunningState::RunStarting()
{
    if (_startAttempts >= _maxStartAttempts) {
        Fail(Error::StartFailed);
        return;
    }
    if (!MayStart()) {
        return;
    }
    const int result = StartRCDMeasurement(_requestTimeout);
    ++_startAttempts;
    PauseIfRetryable(result);
    if (result == QueryResult::Acknowledged) {
        SetPhase(MeasurementState::Running);
    }
}

bool RCDRunningState::MayStart() const
{
    return true;
}

void RCDRunningState::RunMeasuring()
{
    bool received = false;
    if (AwaitTestResults(&received)) {
        GetContext()->StartMeasurementRequested.Set(false);
        SetPhase(MeasurementState::Stopped);
    } else if (received) {
        OnTerminated();
    } else {
        OnSilence();
    }
}

bool RCDRunningState::AwaitTestResults(bool* received)
{
    return AwaitIaTaResults(_resultTimeout, received);
}

/// The test is started again, as long as its budget lasts.
void RCDRunningState::OnSilence()
{
    SetPhase(MeasurementState::Starting);
}

void RCDRunningState::OnTerminated()
{
    GetContext()->StartMeasurementRequested.Set(false);
    Fail(Error::RCDDeviceError1);
}

void RCDRunningState::SetPhase(MeasurementState phase)
{
    GetContext()->MeasurementStatus.Set(phase);
}

void RCDRunningState::Fail(Error error)
{
    GetContext()->ErrorCode.Set(error);
    SetPhase(MeasurementState::Stopped);
}

const char* PhaseName(MeasurementState phase)
{
    switch (phase) {
    case MeasurementState::Idle:
        return "IDLE";
    case MeasurementState::Preparing:
        return "PREPARING";
    case MeasurementState::Prepared:
        return "PREPARED";
    case MeasurementState::Starting:
        return "STARTING";
    case MeasurementState::Running:
    case MeasurementState::Measuring:
        return "RUNNING";
    case MeasurementState::Stopping:
        return "STOPING";
    case MeasurementState::Stopped:
        return "STOPED";
    case MeasurementState::Unknown:
        break;
    }
    return "UNKNOWN";
}

void TraceGreen(const char* text)
{
    Trace::WriteIn(Trace::Colour::Green, QStringLiteral("       ") + QLatin1String(text));
}

} // namespace Vesmar
