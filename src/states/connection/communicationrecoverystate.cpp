#include "states/connection/communicationrecoverystate.h"

#include <QThread>

#include "context/responseparser.h"
#include "context/statemachinecontext.h"
#include "link/commandbuilder.h"
#include "link/transciever.h"

namespace Vesmar
{

namespace
{

constexpr int CheckTimeoutMs = 500;
constexpr unsigned MaxAttempts = 10;
constexpr unsigned long ModeResetPauseMs = 3000;

} // namespace

CommunicationRecoveryState::CommunicationRecoveryState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr, "COMMUNICATION RECOVERY STATE ")
{
}

void CommunicationRecoveryState::OnEntry()
{
    State::OnEntry();
    _attempts = 0;
    _isModeResetDone = false;
    ClearMeasurementRequests();
}

void CommunicationRecoveryState::OnRunning()
{
    ReportRecovery();
    const int result = CheckStatus();
    if (result == QueryResult::Data) {
        GetContext()->CommunicationError.Set(false);
        return;
    }
    ++_attempts;
    if (_attempts > MaxAttempts) {
        HandlePersistentFailure(result);
    }
}

int CommunicationRecoveryState::CheckStatus()
{
    const Answer answer = QueryOnce(*GetContext()->GetCommandBuilder()->GetStatusFrame(), CheckTimeoutMs);
    if (answer.result == QueryResult::Data) {
        GetContext()->GetResponseParser()->ParseStatusFrame(*answer.response, *GetContext());
    }
    return answer.result;
}

/// Error 103 replaces every error but 100 to 102, which say why the link was given up.
void CommunicationRecoveryState::ReportRecovery()
{
    const Error present = GetContext()->ErrorCode.Get();
    if (present < Error::NoResponse || present > Error::InvalidResponse) {
        GetContext()->ErrorCode.Set(Error::CommunicationRecovery);
    }
}

void CommunicationRecoveryState::HandlePersistentFailure(int result)
{
    switch (result) {
    case QueryResult::NoResponse:
        GetContext()->ErrorCode.Set(Error::NoResponse);
        break;
    case QueryResult::BadChecksum:
        ResetModeOnceOrReport(Error::InvalidResponse);
        break;
    case QueryResult::Refused:
        ResetModeOnceOrReport(Error::RequestRefused);
        break;
    default:
        GetContext()->ErrorCode.Set(Error::RequestRefused);
        break;
    }
}

void CommunicationRecoveryState::ResetModeOnceOrReport(Error error)
{
    if (_isModeResetDone) {
        GetContext()->ErrorCode.Set(error);
        return;
    }
    ChangeTesterMode(OperationMode::Normal);
    QThread::msleep(ModeResetPauseMs);
    _isModeResetDone = true;
    _attempts = 0;
}

} // namespace Vesmar
