#include "simulator/instrument.h"

#include "simulator/faults.h"
#include "simulator/frames.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <initializer_list>
#include <optional>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>

namespace Simulator
{

namespace
{

constexpr int BitsPerByte = 11; // start bit, eight data bits, parity bit, stop bit

int OpenWake()
{
    const int descriptor = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "no event descriptor");
    }
    return descriptor;
}

/// Waits until a descriptor is readable or the deadline is there; without a deadline as long as it takes.
void WaitReadable(int line, int wake, const std::optional<TimePoint>& deadline)
{
    std::array<pollfd, 2> descriptors{{{line, POLLIN, 0}, {wake, POLLIN, 0}}};
    timespec timeout{};
    if (deadline) {
        const auto left = std::max(*deadline - Clock::now(), Clock::duration::zero());
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
        timeout.tv_sec = seconds.count();
        timeout.tv_nsec = std::chrono::nanoseconds(left - seconds).count();
    }
    ::ppoll(descriptors.data(), descriptors.size(), deadline ? &timeout : nullptr, nullptr);
    eventfd_t wakes = 0;
    ::eventfd_read(wake, &wakes);
}

template <typename Queue>
std::optional<TimePoint> DueAt(const Queue& queue)
{
    return queue.empty() ? std::optional<TimePoint>() : queue.front().dueAt;
}

std::optional<TimePoint> Earliest(std::initializer_list<std::optional<TimePoint>> times)
{
    std::optional<TimePoint> earliest;
    for (const std::optional<TimePoint>& time : times) {
        if (time && (!earliest || *time < *earliest)) {
            earliest = time;
        }
    }
    return earliest;
}

} // namespace

Instrument::Instrument(const InstrumentOptions& options)
    : _model(options.model, Clock::now()),
      _line(std::make_unique<PtyLine>()),
      _devicePath(_line->DevicePath()),
      _log(options.logPath),
      _firmwareFile(options.firmwarePath),
      _answerAfter(options.answerAfter),
      _baud(options.baud),
      _keepsExchanges(options.keepsExchanges),
      _wake(OpenWake()),
      _thread([this] { Serve(); })
{
}

Instrument::~Instrument()
{
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _isStopping = true;
    }
    Wake();
    _thread.join();
}

QString Instrument::DevicePath() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _devicePath;
}

void Instrument::Execute(const ControlCommand& command)
{
    switch (command.verb) {
    case ControlCommand::Verb::Mode:
        SetMode(command.number);
        break;
    case ControlCommand::Verb::Error:
        SetError(command.number);
        break;
    case ControlCommand::Verb::Function:
        SetFunction(command.number);
        break;
    case ControlCommand::Verb::Scenario:
        SetScenario(command.scenario, command.number);
        break;
    case ControlCommand::Verb::Fault:
        SetFault(command.fault, command.delay);
        break;
    }
}

bool Instrument::Execute(const QString& command, QString* error)
{
    QString reason;
    const std::optional<ControlCommand> parsed = ParseControlCommand(command, &reason);
    if (parsed) {
        Execute(*parsed);
    } else if (error != nullptr) {
        *error = reason;
    }
    return parsed.has_value();
}

void Instrument::SetMode(int mode)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _model.SetMode(mode);
    Wake();
}

void Instrument::SetError(int error)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _model.SetError(error);
}

void Instrument::SetFunction(int function)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _model.SetFunction(function);
    Wake();
}

void Instrument::SetScenario(Scenario scenario, int sector)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _model.SetScenario(scenario, sector);
    Wake();
}

void Instrument::SetFault(Fault fault, std::chrono::milliseconds slowAnswer)
{
    std::unique_lock<std::mutex> lock(_mutex);
    _lineChanged.wait(lock, [this] { return !_isLineChanging; });
    if (fault == Fault::HangUp) {
        ReplaceLine(nullptr, lock);
    } else if (!_line) {
        ReplaceLine(std::make_unique<PtyLine>(), lock);
    }
    _fault = fault;
    _slowAnswer = slowAnswer;
}

void Instrument::SetAnswerAfter(std::chrono::microseconds delay)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _answerAfter = delay;
}

void Instrument::AnswerNextWith(const QByteArray& raw)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _scriptedAnswers.push_back(raw);
}

void Instrument::Send(const QByteArray& raw)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    if (_line) {
        _line->Write(raw);
    }
}

std::vector<Exchange> Instrument::Exchanges() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _exchanges;
}

QVector<QByteArray> Instrument::Requests() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    QVector<QByteArray> requests;
    requests.reserve(static_cast<int>(_exchanges.size()));
    for (const Exchange& exchange : _exchanges) {
        requests.append(exchange.request);
    }
    return requests;
}

void Instrument::ClearRequests()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _exchanges.clear();
}

QDateTime Instrument::Date() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _model.Date(Clock::now());
}

QDateTime Instrument::CalibrationDate() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _model.CalibrationDate();
}

StatusWord Instrument::Status()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    FollowModel();
    return _model.Status();
}

QByteArray Instrument::Firmware() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _firmware;
}

void Instrument::Serve()
{
    std::unique_lock<std::mutex> lock(_mutex);
    while (!_isStopping) {
        TakeNewLine();
        ReadLine();
        AnswerDueRequests();
        SendDueAnswers();
        FollowModel();
        WaitForWork(lock);
    }
}

void Instrument::TakeNewLine()
{
    if (!_isLineChanging) {
        return;
    }
    _line = std::move(_newLine);
    _devicePath = _line ? _line->DevicePath() : QString();
    _collector = RequestCollector();
    _pending.clear();
    _sending.clear();
    _isLineChanging = false;
    _lineChanged.notify_all();
}

void Instrument::ReadLine()
{
    if (!_line) {
        return;
    }
    const QByteArray bytes = _line->Read();
    const TimePoint now = Clock::now();
    if (!bytes.isEmpty()) {
        _collector.Append(bytes, now);
    }
    while (const std::optional<CollectedRequest> request = _collector.Take(now)) {
        const TimePoint receivedAt = std::max(now, request->receivedAt + LineTime(request->frame.size()));
        _pending.push_back({*request, receivedAt + AnswerDelay()});
    }
}

void Instrument::AnswerDueRequests()
{
    while (!_pending.empty() && _pending.front().dueAt <= Clock::now()) {
        AnswerRequest(_pending.front().request);
        _pending.pop_front();
    }
}

/// The log tells of a change when it happens, whether anybody asks the instrument or not; but behind the
/// exchange that brings it about.
void Instrument::FollowModel()
{
    _model.Advance(Clock::now());
    if (!_sending.empty()) {
        return;
    }
    for (const QString& change : _model.TakeChanges()) {
        _log.Write(change);
    }
}

void Instrument::AnswerRequest(const CollectedRequest& request)
{
    FollowModel();
    const Exchange exchange{request.frame, AnswerTo(request.frame), request.receivedAt, {}};
    KeepFirmware();
    _sending.push_back({exchange, Clock::now() + LineTime(exchange.answer.size())});
}

/// An answer goes out in one piece when its last byte would arrive: with pauses in it, it would look like
/// several.
void Instrument::SendDueAnswers()
{
    while (!_sending.empty() && _sending.front().dueAt <= Clock::now()) {
        Exchange exchange = _sending.front().exchange;
        _sending.pop_front();
        if (_line) {
            _line->Write(exchange.answer);
        }
        exchange.answeredAt = Clock::now();
        _log.Write(exchange);
        if (_keepsExchanges) {
            _exchanges.push_back(exchange);
        }
    }
}

std::chrono::microseconds Instrument::LineTime(int byteCount) const
{
    return _baud == 0 ? std::chrono::microseconds(0)
                      : std::chrono::microseconds(std::chrono::seconds(BitsPerByte * byteCount)) / _baud;
}

QByteArray Instrument::AnswerTo(const QByteArray& request)
{
    if (!_scriptedAnswers.empty()) {
        QByteArray answer = _scriptedAnswers.front();
        _scriptedAnswers.pop_front();
        return answer;
    }
    if (_fault == Fault::Silent) {
        return {}; // never reaches the instrument
    }
    if (_fault == Fault::Refuse) {
        return Refusal(); // and nothing comes of it
    }
    return Damaged(_model.Answer(request, Clock::now()), _fault);
}

/// Before the acknowledge goes out, so that whoever has seen it finds the file.
void Instrument::KeepFirmware()
{
    if (const std::optional<QByteArray> firmware = _model.TakeConfirmedFirmware()) {
        _firmware = *firmware;
        _firmwareFile.Write(_firmware);
    }
}

std::chrono::microseconds Instrument::AnswerDelay() const
{
    return _fault == Fault::Slow ? _slowAnswer : _answerAfter;
}

void Instrument::WaitForWork(std::unique_lock<std::mutex>& lock)
{
    const std::optional<TimePoint> deadline =
        Earliest({_collector.SilenceEndsAt(), _model.NextChangeAt(), DueAt(_pending), DueAt(_sending)});
    const int line = _line ? _line->Handle() : -1;
    lock.unlock();
    WaitReadable(line, _wake.Get(), deadline);
    lock.lock();
}

/// The serving thread may be waiting at the old line, so it is the one that lets go of it.
void Instrument::ReplaceLine(std::unique_ptr<PtyLine> line, std::unique_lock<std::mutex>& lock)
{
    _newLine = std::move(line);
    _isLineChanging = true;
    Wake();
    _lineChanged.wait(lock, [this] { return !_isLineChanging; });
}

void Instrument::Wake()
{
    ::eventfd_write(_wake.Get(), 1);
}

} // namespace Simulator
