#include "states/state.h"

#include "context/responseparser.h"
#include "context/statemachinecontext.h"
#include "link/commandbuilder.h"
#include "link/trace.h"
#include "link/transciever.h"

namespace Vesmar
{

State::State(StateMachineContext* context, State* parentState, QObject* parent, const char* banner)
    : QObject(parent), _context(context), _parentState(parentState), _banner(banner)
{
}

State::~State() = default;

void State::OnEntry()
{
    Announce("ENTERING ");
}

void State::OnExit()
{
    Announce("LEAVING ");
}

void State::OnRunning() {}

bool State::RequestStatus()
{
    const auto response = Read(*_context->GetCommandBuilder()->GetStatusFrame());
    return RaiseErrorUnless(response &&
                            _context->GetResponseParser()->ParseStatusFrame(*response, *_context));
}

bool State::RequestVersion()
{
    const auto response = Read(*_context->GetCommandBuilder()->GetVersionFrame());
    return RaiseErrorUnless(response &&
                            _context->GetResponseParser()->ParseVersionFrame(*response, *_context));
}

bool State::RequestCurrentDateTime()
{
    const auto response = Read(*_context->GetCommandBuilder()->GetReadCurrentDateFrame());
    return RaiseErrorUnless(response &&
                            _context->GetResponseParser()->ParseCurrentDateTimeFrame(*response, *_context));
}

bool State::RequestCalibrationDateTime()
{
    const auto response = Read(*_context->GetCommandBuilder()->GetReadCalibrationDateFrame());
    return RaiseErrorUnless(
        response && _context->GetResponseParser()->ParseCalibrationDateTimeFrame(*response, *_context));
}

bool State::RequestMeasurementResults(MeasurementType type)
{
    const auto response = Read(*_context->GetCommandBuilder()->GetReadMeasurementFrame());
    return RaiseErrorUnless(
        response && _context->GetResponseParser()->ParseMeasurementResults(*response, *_context, type));
}

bool State::ConfigureCurrentDateTime(const QDateTime& dateTime)
{
    const std::unique_ptr<QByteArray> frame(
        _context->GetCommandBuilder()->CreateSetCurrentDateTimeFrame(dateTime));
    return Send(*frame);
}

bool State::ConfigureCalibrationDateTime(const QDateTime& dateTime)
{
    const std::unique_ptr<QByteArray> frame(
        _context->GetCommandBuilder()->CreateSetCalibrationDateTimeFrame(dateTime));
    return Send(*frame);
}

bool State::ChangeTesterMode(OperationMode mode)
{
    const std::unique_ptr<QByteArray> frame(_context->GetCommandBuilder()->CreateChangeTesterModeFrame(mode));
    return Send(*frame);
}

bool State::PrepareMeasurement(MeasurementSettings& settings)
{
    const std::unique_ptr<QByteArray> frame(
        _context->GetCommandBuilder()->CreatePrepareMeasurementFrame(settings));
    return Send(*frame);
}

bool State::StartMeasurement()
{
    const auto isNotAborted = [this] { return !_context->AbortMeasurementRequested.Get(); };
    const Answer answer = Query(*_context->GetCommandBuilder()->GetStartMeasurementFrame(), isNotAborted);
    return RaiseErrorUnless(answer.result == QueryResult::Acknowledged);
}

bool State::StopMeasurement()
{
    return Send(*_context->GetCommandBuilder()->GetStopMeasurementFrame());
}

void State::ReportError(Error error)
{
    if (_context->ErrorCode.Get() == Error::NoErrors) {
        _context->ErrorCode.Set(error);
    }
}

void State::TraceBanner(const char* text, const char* end)
{
    Trace::Line() << Trace::Colour::Blue << "<<<                              " << text << end
                  << Trace::Colour::None;
}

void State::ClearPrepareRequest(const MeasurementSettings& sent)
{
    // The application stores its settings before it raises the request. The request is cleared first here:
    // after the comparison, it could be cleared together with one that was raised in between.
    _context->PrepareMeasurementRequested.Set(false);
    if (_context->TestSettings.Get() != &sent) {
        _context->PrepareMeasurementRequested.Set(true);
    }
}

void State::ClearMeasurementRequests()
{
    _context->AbortMeasurementRequested.Set(false);
    _context->PrepareMeasurementRequested.Set(false);
    _context->StartMeasurementRequested.Set(false);
    _context->IsMeasurementModeActive.Set(false);
}

Answer State::Query(const QByteArray& frame, const std::function<bool()>& isWanted)
{
    QByteArray* response = nullptr;
    const int result = _context->GetTransciever()->RunQuery(frame, &response, isWanted);
    return {result, std::unique_ptr<QByteArray>(response)};
}

Answer State::QueryOnce(const QByteArray& frame, int timeoutMs)
{
    constexpr int NoRetransmissions = 0;
    QByteArray* response = nullptr;
    const int result = _context->GetTransciever()->RunQuery(frame, timeoutMs, NoRetransmissions, &response);
    return {result, std::unique_ptr<QByteArray>(response)};
}

bool State::Fetch(const QByteArray& frame)
{
    return RaiseErrorUnless(Read(frame) != nullptr);
}

bool State::Send(const QByteArray& frame)
{
    return RaiseErrorUnless(Query(frame).result == QueryResult::Acknowledged);
}

/// The answer to a read request. It is null if no data came.
std::unique_ptr<QByteArray> State::Read(const QByteArray& frame)
{
    Answer answer = Query(frame);
    return answer.result == QueryResult::Data ? std::move(answer.response) : nullptr;
}

bool State::RaiseErrorUnless(bool succeeded)
{
    if (!succeeded) {
        _context->CommunicationError.Set(true);
    }
    return succeeded;
}

void State::Announce(const char* passage) const
{
    if (_banner != nullptr) {
        TraceBanner(passage, _banner);
    }
}

} // namespace Vesmar
