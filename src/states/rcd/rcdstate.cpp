#include "states/rcd/rcdstate.h"

#include <QThread>

#include "context/responseparser.h"
#include "context/statemachinecontext.h"
#include "link/commandbuilder.h"
#include "link/transciever.h"
#include "protocol/frames.h"

namespace Vesmar
{

namespace
{

constexpr int MaxBytesWithoutFrame = 4096;

} // namespace

RCDState::RCDState(StateMachineContext* context, State* parentState, QObject* parent, const char* banner)
    : State(context, parentState, parent, banner)
{
}

int RCDState::RequestRCDStatus(int timeoutMs)
{
    const Answer answer = QueryOnce(*GetContext()->GetCommandBuilder()->GetStatusFrame(), timeoutMs);
    if (answer.result == QueryResult::Data) {
        GetContext()->GetResponseParser()->ParseRCDStatusResponse(*answer.response, *GetContext());
    }
    return answer.result;
}

int RCDState::RequestRCDStatus(int timeoutMs, Error* error)
{
    const Answer answer = QueryOnce(*GetContext()->GetCommandBuilder()->GetStatusFrame(), timeoutMs);
    if (answer.result == QueryResult::Data) {
        GetContext()->GetResponseParser()->ParseRCDStatusResponse(*answer.response, *GetContext(), error);
    }
    return answer.result;
}

int RCDState::PrepareRCDMeasurement(MeasurementSettings& settings, int timeoutMs)
{
    const std::unique_ptr<QByteArray> frame(
        GetContext()->GetCommandBuilder()->CreatePrepareMeasurementFrame(settings));
    return QueryOnce(*frame, timeoutMs).result;
}

int RCDState::StartRCDMeasurement(int timeoutMs)
{
    return QueryOnce(*GetContext()->GetCommandBuilder()->GetStartMeasurementFrame(), timeoutMs).result;
}

int RCDState::RequestRCDCheckObjectError(int timeoutMs)
{
    const Answer answer = QueryOnce(*GetContext()->GetCommandBuilder()->GetReadMeasurementFrame(), timeoutMs);
    if (answer.result == QueryResult::Data) {
        GetContext()->GetResponseParser()->ParseRCDCheckObjectResponse(*answer.response, *GetContext());
    }
    return answer.result;
}

int RCDState::RequestRCDCheckObjectError(int timeoutMs, Error* error)
{
    const Answer answer = QueryOnce(*GetContext()->GetCommandBuilder()->GetReadMeasurementFrame(), timeoutMs);
    if (answer.result != QueryResult::Data) {
        return answer.result;
    }
    const bool isParsed =
        GetContext()->GetResponseParser()->ParseRCDCheckObjectResponseError(*answer.response, error);
    return isParsed ? 1 : 0;
}

QByteArray* RCDState::AwaitResults(int timeoutMs)
{
    QByteArray collected;
    while (collected.size() < MaxBytesWithoutFrame && Collect(collected, timeoutMs)) {
        const QByteArray frame = FindFinalFrame(collected);
        if (!frame.isEmpty()) {
            return new QByteArray(frame);
        }
    }
    return new QByteArray;
}

bool RCDState::AwaitUbReResults(int timeoutMs, bool* received)
{
    const std::unique_ptr<QByteArray> frame(AwaitResults(timeoutMs));
    *received = !frame->isEmpty();
    return frame->size() == MeasurementFrameSize &&
           GetContext()->GetResponseParser()->ParseUbReMeasurementResponse(*frame, *GetContext());
}

bool RCDState::AwaitIaTaResults(int timeoutMs, bool* received)
{
    const std::unique_ptr<QByteArray> frame(AwaitResults(timeoutMs));
    *received = !frame->isEmpty();
    return frame->size() == MeasurementFrameSize &&
           GetContext()->GetResponseParser()->ParseIaTaMeasurementResponse(*frame, *GetContext());
}

void RCDState::ClearCheckObjectError()
{
    const Error error = GetContext()->ErrorCode.Get();
    if (error >= Error::RCDCheckObjectFailed && error <= Error::RCDCheckObjectULNIECInvalid) {
        GetContext()->ErrorCode.Set(Error::NoErrors);
    }
}

void RCDState::ResetAttempts()
{
    _statusAttempts = 0;
    _prepareAttempts = 0;
    _lsaapCounter = 0;
    _startAttempts = 0;
}

int RCDState::AttemptStatus()
{
    const int result = RequestRCDStatus(_requestTimeout);
    ++_statusAttempts;
    PauseIfRetryable(result);
    return result;
}

int RCDState::AttemptPrepare(MeasurementSettings& settings)
{
    const int result = PrepareRCDMeasurement(settings, _requestTimeout);
    ++_prepareAttempts;
    PauseIfRetryable(result);
    return result;
}

void RCDState::Pause() const
{
    QThread::msleep(static_cast<unsigned long>(_retryDelay));
}

void RCDState::PauseIfRetryable(int result) const
{
    if (IsRetryable(result)) {
        Pause();
    }
}

bool RCDState::IsRetryable(int result)
{
    return result == QueryResult::Refused || result == QueryResult::BadChecksum;
}

bool RCDState::HasPassedStartTest() const
{
    const StartTestResult result = GetContext()->StartTestStatus.Get();
    return (result == StartTestResult::Status14 || result == StartTestResult::Status15) &&
           GetContext()->NewMeasurement.Get();
}

/// Appends what the line brings. False when nothing came.
bool RCDState::Collect(QByteArray& collected, int timeoutMs)
{
    const std::unique_ptr<QByteArray> received(GetContext()->GetTransciever()->ReadBuffer(timeoutMs));
    collected += *received;
    return !received->isEmpty();
}

/// Publishes and removes the status frames at the front, and returns the frame that ends the wait. The frame
/// is empty if none has arrived.
QByteArray RCDState::FindFinalFrame(QByteArray& collected)
{
    const ResponseParser& parser = *GetContext()->GetResponseParser();
    while (true) {
        QByteArray result = collected.left(MeasurementFrameSize);
        if (parser.IsRCDMeasurementResultResponse(result)) {
            return result;
        }
        QByteArray status = collected.left(StatusFrameSize);
        if (!parser.IsRCDMeasurementStatusResponse(status)) {
            return {};
        }
        parser.ParseRCDStatusResponse(status, *GetContext());
        collected.remove(0, StatusFrameSize);
        if (GetContext()->MeasurementFunctionStatus.Get() == FunctionState::Terminated) {
            return status;
        }
    }
}

} // namespace Vesmar
