#include "states/rcd/rcdpreparedphase.h"

#include "context/statemachinecontext.h"
#include "link/traceline.h"
#include "link/transciever.h"
#include "states/rcd/rcdtrace.h"

namespace Vesmar
{

RCDPreparedPhase::RCDPreparedPhase(StateMachineContext* context, State* parentState, RCDRun run,
                                   const char* banner)
    : RCDState(context, parentState, nullptr, banner), _run(run)
{
}

void RCDPreparedPhase::RunPrepared()
{
    if (RCDRules::DropsPrepareRequest[_run]) {
        GetContext()->PrepareMeasurementRequested.Set(false);
    }
    if (_lsaapCounter >= _lsaap) {
        Fail(ErrorOfUsedUpPolls());
        return;
    }
    Error error = Error::NoErrors;
    const int result = Poll(&error);
    PauseIfRetryable(result);
    if (result == QueryResult::Data) {
        DecideByPoll(error);
    }
}

void RCDPreparedPhase::RestorePolls()
{
    _lsaapCounter = 0;
    _savedCheckObjectError = Error::NoErrors;
}

void RCDPreparedPhase::SetPhase(MeasurementState phase)
{
    GetContext()->MeasurementStatus.Set(phase);
}

void RCDPreparedPhase::Fail(Error error)
{
    GetContext()->ErrorCode.Set(error);
    SetPhase(MeasurementState::Stopped);
}

void RCDPreparedPhase::PauseIf(const RCDRule<bool>& rule) const
{
    if (rule[_run]) {
        Pause();
    }
}

Error RCDPreparedPhase::ErrorOfUsedUpPolls() const
{
    const bool isObjectError =
        RCDRules::EndsWithObjectError[_run] && _savedCheckObjectError != Error::NoErrors;
    return isObjectError ? _savedCheckObjectError : Error::RCDPreparedStatusAttemptsExhausted;
}

/// One status request. `*error` is the instrument's error when the answer is a status.
int RCDPreparedPhase::Poll(Error* error)
{
    if (RCDRules::TracesPolls[_run]) {
        Trace::Line() << "<<< MeasurementState::Prepared: _lsaapCounter=" << _lsaapCounter
                      << " _lsaap=" << _lsaap;
    }
    int result = 0;
    if (RCDRules::ReportsPollError[_run]) {
        result = RequestRCDStatus(_requestTimeout);
        *error = GetContext()->ErrorCode.Get();
    } else {
        result = RequestRCDStatus(_requestTimeout, error);
    }
    if (RCDRules::TracesPolls[_run]) {
        RCDTrace::Poll(result, _savedCheckObjectError);
    }
    if (DoesPollCount()) {
        ++_lsaapCounter;
    }
    _savedCheckObjectError = Error::NoErrors;
    return result;
}

/// Whether a poll uses up the budget depends on what the poll before it found wrong with the object.
bool RCDPreparedPhase::DoesPollCount() const
{
    switch (RCDRules::CountsPolls[_run]) {
    case RCDRules::Counted::EveryPoll:
        break;
    case RCDRules::Counted::AllButThoseAfter507:
        return _savedCheckObjectError != Error::RCDCheckObjectULNIECInvalid;
    case RCDRules::Counted::NoneAfterAnObjectError:
        return _savedCheckObjectError == Error::NoErrors;
    }
    return true;
}

void RCDPreparedPhase::DecideByPoll(Error error)
{
    if (GetContext()->CurrentMeasurementType.Get() != RCDRules::Function[_run]) {
        Fail(Error::RCDFunctionMismatch);
    } else if (error != Error::NoErrors) {
        SetPhase(MeasurementState::Stopped);
    } else {
        DecideByFunctionState();
    }
}

void RCDPreparedPhase::DecideByFunctionState()
{
    switch (GetContext()->MeasurementFunctionStatus.Get()) {
    case FunctionState::Prepared:
        EndPreparation();
        break;
    case FunctionState::PrepareError:
        if (GetContext()->NewMeasurement.Get()) {
            CheckObject();
        } else {
            PauseIf(RCDRules::PausesAfterPrepareError);
        }
        break;
    default:
        PauseIf(RCDRules::PausesWhileNotPrepared);
        break;
    }
}

void RCDPreparedPhase::EndPreparation()
{
    SetPhase(MeasurementState::Starting);
    if (RCDRules::PreparedClearsError[_run]) {
        GetContext()->ErrorCode.Set(Error::NoErrors);
    }
    PauseIf(RCDRules::PausesOncePrepared);
}

/// A clean object check overrides the prepare error. A check without an answer counts as an object error.
void RCDPreparedPhase::CheckObject()
{
    _savedCheckObjectError = Error::RCDCheckObjectFailed;
    const int result = RequestRCDCheckObjectError(_requestTimeout, &_savedCheckObjectError);
    if (RCDRules::PausesAfterFailedCheck[_run]) {
        PauseIfRetryable(result);
    }
    if (_savedCheckObjectError == Error::NoErrors) {
        if (RCDRules::CleanCheckClearsError[_run]) {
            GetContext()->ErrorCode.Set(Error::NoErrors);
        }
        SetPhase(MeasurementState::Starting);
    } else if (RCDRules::WaitsForObject[_run]) {
        WaitForObject();
    }
}

void RCDPreparedPhase::WaitForObject()
{
    if (_savedCheckObjectError == Error::RCDCheckObjectULNIECInvalid) {
        RCDTrace::InvalidVoltage();
        ReportError(Error::RCDCheckObjectULNIECInvalid);
    } else {
        Pause();
    }
}

} // namespace Vesmar
