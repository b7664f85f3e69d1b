#include "states/rcd/rcdiecrunningstate.h"

#include "context/statemachinecontext.h"
#include "link/transciever.h"

namespace Vesmar
{

void RCDIECRunningState::BeginIECRun()
{
    BeginRun();
    _savedCheckObjectError = Error::NoErrors;
}

void RCDIECRunningState::AfterPrepare()
{
    _savedCheckObjectError = Error::NoErrors;
    _lsaapCounter = 0;
}

void RCDIECRunningState::RunPrepared()
{
    if (_lsaapCounter >= _lsaap) {
        Fail(_savedCheckObjectError == Error::NoErrors ? Error::RCDPreparedStatusAttemptsExhausted
                                                       : _savedCheckObjectError);
        return;
    }
    BeforePoll();
    Error error = Error::NoErrors;
    const int result = RequestRCDStatus(_requestTimeout, &error);
    AfterPoll(result);
    if (DoesPollCount()) {
        ++_lsaapCounter;
    }
    _savedCheckObjectError = Error::NoErrors;
    PauseIfRetryable(result);
    if (result == QueryResult::Data) {
        JudgePoll(error);
    }
}

void RCDIECRunningState::BeforePoll() {}

void RCDIECRunningState::AfterPoll(int /*result*/) {}

void RCDIECRunningState::JudgePoll(Error error)
{
    if (GetContext()->CurrentMeasurementType.Get() != MeasurementType::RCDIEC) {
        Fail(Error::RCDFunctionMismatch);
    } else if (error != Error::NoErrors) {
        SetPhase(MeasurementState::Stopped);
    } else {
        FollowFunction();
    }
}

void RCDIECRunningState::FollowFunction()
{
    switch (GetContext()->MeasurementFunctionStatus.Get()) {
    case FunctionState::Prepared:
        SetPhase(MeasurementState::Starting);
        AfterPrepared();
        break;
    case FunctionState::PrepareError:
        if (GetContext()->NewMeasurement.Get()) {
            CheckObject();
        } else {
            Pause();
        }
        break;
    default:
        AfterOtherStatus();
        break;
    }
}

/// No answer is no proof that nothing is wrong.
void RCDIECRunningState::CheckObject()
{
    Error error = Error::RCDCheckObjectFailed;
    RequestRCDCheckObjectError(_requestTimeout, &error);
    _savedCheckObjectError = error;
    if (error == Error::NoErrors) {
        GetContext()->ErrorCode.Set(Error::NoErrors);
        SetPhase(MeasurementState::Starting);
    } else {
        OnObjectError();
    }
}

void RCDIECRunningState::OnObjectError() {}

} // namespace Vesmar
