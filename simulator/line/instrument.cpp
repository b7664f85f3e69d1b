#include "simulator/line/instrument.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <initializer_list>
#include <optional>
#include <system_error>
#include <utility>

#include "simulator/faults/faults.h"
#include "simulator/wire/frames.h"

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

/// The first of this kind, if any.
const FaultEntry* Find(const std::vector<FaultEntry>& faults, Fault kind)
{
    const auto found = std::find_if(faults.begin(), faults.end(),
                                    [kind](const FaultEntry& fault) { return fault.fault == kind; });
    return found == faults.end() ? nullptr : &*found;
}

std::optional<Player> PlayerOf(const std::vector<RecordedEntry>& recording)
{
    return recording.empty() ? std::nullopt : std::optional<Player>(recording);
}

} // namespace

Instrument::Instrument(const InstrumentOptions& options)
    : _model(options.model, Clock::now()),
      _player(PlayerOf(options.recording)),
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

void Instrument::SetLineListener(std::function<void(const QString& devicePath)> listener)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _lineListener = std::move(listener);
}

void Instrument::Execute(const ControlCommand& command)
{
    if (command.verb == ControlCommand::Verb::Fault) {
        SetFault(command.fault, command.delay);
        return;
    }
    const std::lock_guard<std::mutex> lock(_mutex);
    ExecuteHere(command);
    Wake();
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

void Instrument::SetScenario(Scenario scenario, int number)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _model.SetScenario(scenario, number);
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
    _standingFault = EntryOf(fault);
    _standingFault.delay = slowAnswer;
}

bool Instrument::AddFaults(const std::vector<FaultEntry>& faults)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    const bool areAdded = _faultPlan.Add(faults, Clock::now());
    Wake();
    return areAdded;
}

void Instrument::ClearFaults()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _faultPlan.Clear();
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
        CarryOutDue();
        ReadLine();
        AnswerDueRequests();
        SendDueBytes();
        FollowModel();
        WaitForWork(lock);
    }
}

void Instrument::TakeNewLine()
{
    if (!_isLineChanging) {
        return;
    }
    ChangeLine(std::move(_newLine));
    _isLineChanging = false;
    _lineChanged.notify_all();
}

/// The listener learns of the end first, before the system gives the path of the old line to another one.
void Instrument::ChangeLine(std::unique_ptr<PtyLine> line)
{
    if (_lineListener) {
        _lineListener({});
    }
    _line = std::move(line);
    _devicePath = _line ? _line->DevicePath() : QString();
    _collector = RequestCollector();
    _pending.clear();
    _sending.clear();
    _lineBackAt.reset();
    if (_lineListener) {
        _lineListener(_devicePath);
    }
}

void Instrument::ReturnLine()
{
    _lineBackAt.reset();
    try {
        ChangeLine(std::make_unique<PtyLine>());
    } catch (const std::system_error& error) {
        _log.Write(QStringLiteral("the line stays broken: %1").arg(QString::fromLocal8Bit(error.what())));
    }
}

/// Before the line is read, so that what is due at once is done before the first request.
void Instrument::CarryOutDue()
{
    if (_lineBackAt && *_lineBackAt <= Clock::now()) {
        ReturnLine();
    }
    for (const FaultEntry& act : _faultPlan.TakeDue(Clock::now())) {
        CarryOut(act);
    }
}

void Instrument::CarryOut(const FaultEntry& act)
{
    if (act.command) {
        ExecuteHere(*act.command);
        return;
    }
    ChangeLine(nullptr);
    if (act.lineBackIn) {
        _lineBackAt = Clock::now() + *act.lineBackIn;
    }
}

/// A fault may change the line, so that one is for the serving thread only.
void Instrument::ExecuteHere(const ControlCommand& command)
{
    switch (command.verb) {
    case ControlCommand::Verb::Mode:
        _model.SetMode(command.number);
        break;
    case ControlCommand::Verb::Restart:
        _model.RestartInto(command.number, Clock::now());
        break;
    case ControlCommand::Verb::Error:
        _model.SetError(command.number);
        break;
    case ControlCommand::Verb::Function:
        _model.SetFunction(command.number);
        break;
    case ControlCommand::Verb::Scenario:
        _model.SetScenario(command.scenario, command.number);
        break;
    case ControlCommand::Verb::Fault:
        _standingFault = EntryOf(command.fault);
        _standingFault.delay = command.delay;
        if (command.fault == Fault::HangUp) {
            ChangeLine(nullptr);
        } else if (!_line) {
            ReturnLine();
        }
        break;
    }
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
        const std::vector<FaultEntry> faults = _faultPlan.HappeningAt(request->frame, now);
        _pending.push_back({*request, receivedAt + AnswerDelay(WithStanding(faults)), faults});
    }
}

void Instrument::AnswerDueRequests()
{
    while (!_pending.empty() && _pending.front().dueAt <= Clock::now()) {
        const PendingRequest pending = _pending.front();
        _pending.pop_front();
        AnswerRequest(pending);
    }
}

/// The log tells of a change when it happens, whether anybody asks the instrument or not; but behind the
/// exchange that brings it about.
void Instrument::FollowModel()
{
    _model.Advance(Clock::now());
    TakeFrames();
    if (!_sending.empty() || _player) {
        return;
    }
    for (const QString& change : _model.TakeChanges()) {
        _log.Write(change);
    }
}

/// What is sent while the instrument is unplugged or its line is broken is lost.
void Instrument::TakeFrames()
{
    const bool isLost =
        !_line || _standingFault.fault == Fault::Silent || _faultPlan.SwallowsEverything(Clock::now());
    for (const FramePiece& piece : DueFrames()) {
        if (!isLost) {
            _sending.push_back({piece.bytes, std::nullopt, Clock::now(), piece.pauseBefore});
        }
    }
}

std::vector<FramePiece> Instrument::DueFrames()
{
    return _player ? _player->TakeFrames(Clock::now()) : _model.TakeFrames();
}

std::optional<TimePoint> Instrument::NextChangeAt() const
{
    return _player ? _player->NextFrameAt() : _model.NextChangeAt();
}

void Instrument::AnswerRequest(const PendingRequest& pending)
{
    for (const FaultEntry& fault : pending.faults) {
        if (fault.IsAct()) {
            CarryOut(fault);
        }
    }
    FollowModel();
    const std::vector<FaultEntry> faults = WithStanding(pending.faults);
    const QByteArray& request = pending.request.frame;
    const Exchange exchange{request, AnswerTo(request, faults), pending.request.receivedAt, {}};
    KeepFirmware();
    QueueAnswer(exchange, faults);
}

void Instrument::QueueAnswer(const Exchange& exchange, const std::vector<FaultEntry>& faults)
{
    const FaultEntry* split = Find(faults, Fault::Split);
    const TimePoint now = Clock::now();
    QByteArray rest = exchange.answer;
    std::chrono::microseconds pause{0};
    while (split != nullptr && rest.size() > split->length) {
        _sending.push_back({rest.left(split->length), std::nullopt, now, pause, true});
        rest.remove(0, split->length);
        pause = split->pause;
    }
    _sending.push_back({rest, exchange, now, pause});
}

/// An answer goes out in one piece when its last byte would arrive: with pauses in it, it would look like
/// several. Only a fault splits it.
void Instrument::SendDueBytes()
{
    for (auto dueAt = NextBytesAt(); dueAt && *dueAt <= Clock::now(); dueAt = NextBytesAt()) {
        const PendingBytes sent = _sending.front();
        _sending.pop_front();
        if (_line) {
            _line->Write(sent.bytes);
        }
        NoteSent(sent);
    }
}

std::optional<TimePoint> Instrument::NextBytesAt() const
{
    if (_sending.empty()) {
        return std::nullopt;
    }
    const PendingBytes& next = _sending.front();
    return std::max(next.readyAt, _lastSentAt + next.pauseBefore) + LineTime(next.bytes.size());
}

void Instrument::NoteSent(const PendingBytes& sent)
{
    _lastSentAt = Clock::now();
    if (sent.isUnfinished) {
        return;
    }
    if (!sent.exchange) {
        _log.WriteUnasked(sent.bytes);
        return;
    }
    Exchange exchange = *sent.exchange;
    exchange.answeredAt = _lastSentAt;
    _log.Write(exchange);
    if (_keepsExchanges) {
        _exchanges.push_back(exchange);
    }
}

std::chrono::microseconds Instrument::LineTime(int byteCount) const
{
    return _baud == 0 ? std::chrono::microseconds(0)
                      : std::chrono::microseconds(std::chrono::seconds(BitsPerByte * byteCount)) / _baud;
}

QByteArray Instrument::AnswerTo(const QByteArray& request, const std::vector<FaultEntry>& faults)
{
    if (!_line) {
        return {}; // it has broken at this request
    }
    if (!_scriptedAnswers.empty()) {
        QByteArray answer = _scriptedAnswers.front();
        _scriptedAnswers.pop_front();
        return answer;
    }
    if (Find(faults, Fault::Silent) != nullptr) {
        return {}; // never reaches the instrument
    }
    const bool isRefused = Find(faults, Fault::Refuse) != nullptr; // and nothing comes of it
    QByteArray answer = isRefused ? Refusal() : UndamagedAnswerTo(request);
    for (const FaultEntry& fault : faults) {
        answer = Damaged(answer, fault);
    }
    return answer;
}

QByteArray Instrument::UndamagedAnswerTo(const QByteArray& request)
{
    const TimePoint now = Clock::now();
    std::optional<QByteArray> recorded = _player ? _player->Answer(request, now) : std::nullopt;
    return recorded ? *recorded : _model.Answer(request, now);
}

std::vector<FaultEntry> Instrument::WithStanding(const std::vector<FaultEntry>& faults) const
{
    std::vector<FaultEntry> all = faults;
    all.push_back(_standingFault);
    return all;
}

/// Before the acknowledge goes out, so that whoever has seen it finds the file.
void Instrument::KeepFirmware()
{
    if (const std::optional<QByteArray> firmware = _model.TakeConfirmedFirmware()) {
        _firmware = *firmware;
        _firmwareFile.Write(_firmware);
    }
}

std::chrono::microseconds Instrument::AnswerDelay(const std::vector<FaultEntry>& faults) const
{
    const FaultEntry* slow = Find(faults, Fault::Slow);
    return slow != nullptr ? slow->delay : _answerAfter;
}

void Instrument::WaitForWork(std::unique_lock<std::mutex>& lock)
{
    const std::optional<TimePoint> nextRequestAt =
        _pending.empty() ? std::optional<TimePoint>() : _pending.front().dueAt;
    const std::optional<TimePoint> deadline =
        Earliest({_collector.SilenceEndsAt(), NextChangeAt(), nextRequestAt, NextBytesAt(), _lineBackAt,
                  _faultPlan.NextDueAt()});
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
