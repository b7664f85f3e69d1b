#include "states/rcd/rcdubrepreparation.h"

#include <QThread>

#include "context/statemachinecontext.h"
#include "link/traceline.h"
#include "link/transciever.h"

namespace Vesmar
{

namespace
{

constexpr unsigned long StopPauseMs = 200;

} // namespace

RCDUbRePreparation::RCDUbRePreparation(StateMachineContext* context, State* parentState, const char* banner)
    : RCDState(context, parentState, nullptr, banner)
{
}

void RCDUbRePreparation::ContinuePreparation(MeasurementState status)
{
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

void RCDUbRePreparation::BeginPreparation()
{
    if (!GetContext()->PrepareMeasurementRequested.Get() ||
        (GetContext()->ErrorCode.Get() != Error::NoErrors && !StopFunction())) {
        return;
    }
    _statusAttempts = 0;
    _prepareAttempts = 0;
    _lsaapCounter = 0;
    GetContext()->MeasurementStatus.Set(MeasurementState::Preparing);
}

void RCDUbRePreparation::AwaitReadiness()
{
    if (_statusAttempts >= _maxStatusAttempts) {
        GetContext()->ErrorCode.Set(Error::RCDIdleStatusAttemptsExhausted);
        GetContext()->StartTestStatus.Set(StartTestResult::Unknown);
        WithdrawPreparation();
    } else if (AttemptStatus() == QueryResult::Data) {
        DecideByReadiness();
    }
}

void RCDUbRePreparation::DecideByReadiness()
{
    const MeasurementType function = GetContext()->CurrentMeasurementType.Get();
    if (function != MeasurementType::Monitoring) {
        Trace::Line() << "currentMesuarment type != monitoringMode: " << static_cast<int>(function);
        GetContext()->MeasurementStatus.Set(MeasurementState::Prepared);
        return;
    }
    const bool isFaultless = GetContext()->ErrorCode.Get() == Error::NoErrors;
    Trace::Line() << (isFaultless ? "no Error, status: " : "Error else, status: ")
                  << static_cast<int>(GetContext()->StartTestStatus.Get());
    if (isFaultless && HasPassedStartTest()) {
        GetContext()->MeasurementStatus.Set(MeasurementState::Prepared);
    } else {
        Pause();
    }
}

void RCDUbRePreparation::Prepare()
{
    if (_prepareAttempts >= _maxPrepareAttempts) {
        Fail(Error::PrepareFailed);
        return;
    }
    MeasurementSettings& settings = *GetContext()->TestSettings.Get();
    if (AttemptPrepare(settings) == QueryResult::Acknowledged) {
        GetContext()->MeasurementStatus.Set(MeasurementState::Idle);
        ClearPrepareRequest(settings);
    }
}

void RCDUbRePreparation::WatchPrepared()
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
        DecideByStatus(error);
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

void RCDUbRePreparation::DecideByStatus(Error error)
{
    if (GetContext()->CurrentMeasurementType.Get() != MeasurementType::RCD) {
        Fail(Error::RCDFunctionMismatch);
    } else if (error != Error::NoErrors) {
        Fail(error);
    } else {
        DecideByFunctionState();
    }
}

void RCDUbRePreparation::DecideByFunctionState()
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

bool RCDUbRePreparation::StopFunction()
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

void RCDUbRePreparation::Fail(Error error)
{
    GetContext()->ErrorCode.Set(error);
    WithdrawPreparation();
}

/// After it, the application has to ask for a preparation anew.
void RCDUbRePreparation::WithdrawPreparation()
{
    GetContext()->PrepareMeasurementRequested.Set(false);
    GetContext()->MeasurementStatus.Set(MeasurementState::Unknown);
}

} // namespace Vesmar
