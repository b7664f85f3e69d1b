#include "states/rcd/rcdrunningstate.h"

#include "context/statemachinecontext.h"
#include "link/transciever.h"
#include "states/rcd/rcdtrace.h"

namespace Vesmar
{

void RCDRunningState::OnEntry()
{
    State::OnEntry();
    SetPhase(MeasurementState::Idle);
    GetContext()->PrepareMeasurementRequested.Set(false);
    GetContext()->StartMeasurementRequested.Set(false);
    ResetAttempts();
    RestorePolls();
    if (RCDRules::IsRunningFrom[GetRun()] == RCDRules::RunningFrom::Entry) {
        GetContext()->IsMeasurementRunning.Set(true);
    }
}

void RCDRunningState::OnExit()
{
    State::OnExit();
    if (RCDRules::IsRunningFrom[GetRun()] != RCDRules::RunningFrom::Never) {
        GetContext()->IsMeasurementRunning.Set(false);
    }
}

void RCDRunningState::RunPhase()
{
    const MeasurementState phase = GetContext()->MeasurementStatus.Get();
    RCDTrace::Phase(RCDRules::NamesPhase[GetRun()], phase);
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
        RunMeasuring(phase);
        break;
    case MeasurementState::Stopping:
    case MeasurementState::Stopped:
        GetContext()->IsMeasurementRunning.Set(false);
        break;
    case MeasurementState::Unknown:
        break;
    }
}

void RCDRunningState::RunIdle()
{
    if (_statusAttempts >= _maxStatusAttempts) {
        Fail(Error::RCDIdleStatusAttemptsExhausted);
    } else if (AttemptStatus() == QueryResult::Data) {
        LeaveIdleWhenReady();
        PauseIf(RCDRules::PausesAfterIdleStatus);
    }
}

void RCDRunningState::LeaveIdleWhenReady()
{
    const bool isFunctionActive = GetContext()->CurrentMeasurementType.Get() != MeasurementType::Monitoring;
    if (!isFunctionActive && GetContext()->ErrorCode.Get() != Error::NoErrors) {
        SetPhase(MeasurementState::Stopped);
    } else if (isFunctionActive || HasPassedStartTest()) {
        SetPhase(MeasurementState::Preparing);
    }
}

void RCDRunningState::RunPreparing()
{
    if (_prepareAttempts >= _maxPrepareAttempts) {
        Fail(Error::PrepareFailed);
    } else if (AttemptPrepare(*GetContext()->TestSettings.Get()) == QueryResult::Acknowledged) {
        if (RCDRules::PreparationRestoresPolls[GetRun()]) {
            RestorePolls();
        }
        SetPhase(MeasurementState::Prepared);
    }
}

void RCDRunningState::RunStarting()
{
    if (_startAttempts >= _maxStartAttempts) {
        Fail(Error::StartFailed);
        return;
    }
    if (IsHeldByAbort()) {
        return;
    }
    const int result = StartRCDMeasurement(_requestTimeout);
    ++_startAttempts;
    PauseIfRetryable(result);
    if (result == QueryResult::Acknowledged) {
        SetPhase(MeasurementState::Running);
    }
}

void RCDRunningState::RunMeasuring(MeasurementState phase)
{
    if (RCDRules::Awaits[GetRun()] != RCDRules::Results::None) {
        WaitForResults();
    } else if (phase == MeasurementState::Running) {
        SetPhase(MeasurementState::Stopped);
    }
}

void RCDRunningState::WaitForResults()
{
    if (IsHeldByAbort()) {
        return;
    }
    if (RCDRules::IsRunningFrom[GetRun()] == RCDRules::RunningFrom::Start) {
        GetContext()->IsMeasurementRunning.Set(true);
    }
    bool received = false;
    if (AwaitTestResults(&received)) {
        GetContext()->StartMeasurementRequested.Set(false);
        SetPhase(MeasurementState::Stopped);
    } else if (received) {
        EndAfterTermination();
    } else {
        EndAfterSilence();
    }
}

bool RCDRunningState::AwaitTestResults(bool* received)
{
    return RCDRules::Awaits[GetRun()] == RCDRules::Results::UbRe ? AwaitUbReResults(_resultTimeout, received)
                                                                 : AwaitIaTaResults(_resultTimeout, received);
}

void RCDRunningState::EndAfterTermination()
{
    const bool is525 = GetContext()->ErrorCode.Get() == Error::RCDDeviceError5;
    if (is525 && RCDRules::Error525BeginsAnew[GetRun()]) {
        GetContext()->ErrorCode.Set(Error::NoErrors);
        SetPhase(MeasurementState::Idle);
    } else {
        GetContext()->StartMeasurementRequested.Set(false);
        Fail(Error::RCDDeviceError1);
    }
}

void RCDRunningState::EndAfterSilence()
{
    if (RCDRules::SilenceEndsTheRun[GetRun()]) {
        _startAttempts = _maxStartAttempts;
        Fail(Error::RCDDeviceError0);
    } else {
        SetPhase(MeasurementState::Starting);
    }
}

bool RCDRunningState::IsHeldByAbort() const
{
    return RCDRules::AbortHoldsStart[GetRun()] && GetContext()->AbortMeasurementRequested.Get();
}

} // namespace Vesmar
