#include "simulator/line/lineserver.h"

#include <algorithm>
#include <initializer_list>
#include <system_error>
#include <utility>

#include "simulator/faults/faults.h"
#include "simulator/wire/frames.h"

namespace Simulator
{

namespace
{

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

/// The first fault of this kind, if any.
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

LineServer::LineServer(const InstrumentOptions& options)
    : _model(options.model, Clock::now()),
      _player(PlayerOf(options.recording)),
      _line(std::make_unique<PtyLine>()),
      _outbox(options.baud),
      _answerAfter(options.answerAfter),
      _log(options.logPath),
      _keepsExchanges(options.keepsExchanges),
      _firmwareFile(options.firmwarePath)
{
}

void LineServer::SetLineListener(std::function<void(const QString& devicePath)> listener)
{
    _lineListener = std::move(listener);
}

void LineServer::Execute(const ControlCommand& command)
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
        SetFault(command.fault, command.delay);
        break;
    }
}

void LineServer::SetFault(Fault fault, std::chrono::milliseconds delay)
{
    _standingFault = EntryOf(fault);
    _standingFault.delay = delay;
    if (fault == Fault::HangUp) {
        HangUp(std::nullopt);
    } else if (!_line) {
        ReturnLine();
    }
}

bool LineServer::AddFaults(const std::vector<FaultEntry>& faults)
{
    return _faultPlan.Add(faults, Clock::now());
}

void LineServer::Send(const QByteArray& raw)
{
    if (_line) {
        _line->Write(raw);
    }
}

void LineServer::AdvanceModel()
{
    _model.Advance(Clock::now());
    QueueUnaskedFrames();
    // The log records a change when it happens, whether anybody asks the instrument or not; but behind the
    // exchange that brings it about.
    if (!_outbox.IsEmpty() || _player) {
        return;
    }
    for (const QString& change : _model.CollectChanges()) {
        _log.Write(change);
    }
}

void LineServer::Work()
{
    CarryOutDue(); // before the line is read, so that what is due at once is done before the first request
    ReadLine();
    AnswerDueRequests();
    SendDueBytes();
    AdvanceModel();
}

std::optional<TimePoint> LineServer::NextWorkAt() const
{
    const std::optional<TimePoint> nextChangeAt = _player ? _player->NextFrameAt() : _model.NextChangeAt();
    const std::optional<TimePoint> nextRequestAt =
        _pending.empty() ? std::optional<TimePoint>() : _pending.front().dueAt;
    return Earliest({_collector.SilenceEndsAt(), nextChangeAt, nextRequestAt, _outbox.NextAt(), _lineBackAt,
                     _faultPlan.NextDueAt()});
}

void LineServer::HangUp(std::optional<std::chrono::milliseconds> backIn)
{
    ReplaceLine(nullptr);
    if (backIn) {
        _lineBackAt = Clock::now() + *backIn;
    }
}

void LineServer::ReturnLine()
{
    _lineBackAt.reset();
    try {
        ReplaceLine(std::make_unique<PtyLine>());
    } catch (const std::system_error& error) {
        _log.Write(QStringLiteral("the line stays broken: %1").arg(QString::fromLocal8Bit(error.what())));
    }
}

/// The listener learns of the end first, before the system gives the path of the old line to another one.
void LineServer::ReplaceLine(std::unique_ptr<PtyLine> line)
{
    if (_lineListener) {
        _lineListener({});
    }
    _line = std::move(line);
    _collector = RequestCollector();
    _pending.clear();
    _outbox.Clear();
    _lineBackAt.reset();
    if (_lineListener) {
        _lineListener(DevicePath());
    }
}

void LineServer::CarryOutDue()
{
    if (_lineBackAt && *_lineBackAt <= Clock::now()) {
        ReturnLine();
    }
    for (const FaultEntry& act : _faultPlan.CollectDue(Clock::now())) {
        CarryOut(act);
    }
}

void LineServer::CarryOut(const FaultEntry& act)
{
    if (act.command) {
        Execute(*act.command);
    } else {
        HangUp(act.lineBackIn);
    }
}

/// What is sent while the instrument is unplugged or its line is broken is lost.
void LineServer::QueueUnaskedFrames()
{
    const TimePoint now = Clock::now();
    const bool isLost = !_line || _standingFault.fault == Fault::Silent || _faultPlan.SwallowsEverything(now);
    for (const FramePiece& piece : _player ? _player->CollectFrames(now) : _model.CollectFrames()) {
        if (!isLost) {
            _outbox.AddUnasked(piece, now);
        }
    }
}

void LineServer::ReadLine()
{
    if (!_line) {
        return;
    }
    const QByteArray bytes = _line->Read();
    const TimePoint now = Clock::now();
    if (!bytes.isEmpty()) {
        _collector.Append(bytes, now);
    }
    while (const std::optional<CollectedRequest> request = _collector.Extract(now)) {
        const TimePoint receivedAt =
            std::max(now, request->receivedAt + _outbox.LineTime(request->frame.size()));
        const std::vector<FaultEntry> faults = _faultPlan.HappeningAt(request->frame, now);
        _pending.push_back({*request, receivedAt + AnswerDelay(WithStanding(faults)), faults});
    }
}

void LineServer::AnswerDueRequests()
{
    while (!_pending.empty() && _pending.front().dueAt <= Clock::now()) {
        const PendingRequest pending = _pending.front();
        _pending.pop_front();
        Answer(pending);
    }
}

void LineServer::Answer(const PendingRequest& pending)
{
    for (const FaultEntry& fault : pending.faults) {
        if (fault.IsAct()) {
            CarryOut(fault);
        }
    }
    AdvanceModel();
    const std::vector<FaultEntry> faults = WithStanding(pending.faults);
    const QByteArray& request = pending.request.frame;
    const Exchange exchange{request, AnswerTo(request, faults), pending.request.receivedAt, {}};
    SaveFirmware();
    _outbox.Add(exchange, Find(faults, Fault::Split), Clock::now());
}

QByteArray LineServer::AnswerTo(const QByteArray& request, const std::vector<FaultEntry>& faults)
{
    if (!_line) {
        return {}; // the line has broken at this request
    }
    if (!_scriptedAnswers.empty()) {
        QByteArray answer = _scriptedAnswers.front();
        _scriptedAnswers.pop_front();
        return answer;
    }
    if (Find(faults, Fault::Silent) != nullptr) {
        return {}; // the request never reaches the instrument
    }
    const bool isRefused = Find(faults, Fault::Refuse) != nullptr; // and nothing comes of it
    QByteArray answer = isRefused ? Refusal() : UndamagedAnswerTo(request);
    for (const FaultEntry& fault : faults) {
        answer = Damaged(answer, fault);
    }
    return answer;
}

QByteArray LineServer::UndamagedAnswerTo(const QByteArray& request)
{
    const TimePoint now = Clock::now();
    std::optional<QByteArray> recorded = _player ? _player->Answer(request, now) : std::nullopt;
    return recorded ? *recorded : _model.Answer(request, now);
}

std::vector<FaultEntry> LineServer::WithStanding(std::vector<FaultEntry> faults) const
{
    faults.push_back(_standingFault);
    return faults;
}

std::chrono::microseconds LineServer::AnswerDelay(const std::vector<FaultEntry>& faults) const
{
    const FaultEntry* slow = Find(faults, Fault::Slow);
    return slow != nullptr ? slow->delay : _answerAfter;
}

/// This happens before the acknowledge goes out, so that whoever has seen the acknowledge finds the file.
void LineServer::SaveFirmware()
{
    if (const std::optional<QByteArray> firmware = _model.CollectConfirmedFirmware()) {
        _firmware = *firmware;
        _firmwareFile.Write(_firmware);
    }
}

void LineServer::SendDueBytes()
{
    while (const std::optional<OutgoingBytes> due = _outbox.RemoveDue(Clock::now())) {
        Send(due->bytes);
        const TimePoint sentAt = Clock::now();
        _outbox.SetQuietSince(sentAt);
        Record(*due, sentAt);
    }
}

void LineServer::Record(const OutgoingBytes& sent, TimePoint sentAt)
{
    if (sent.isUnfinished) {
        return;
    }
    if (!sent.exchange) {
        _log.WriteUnasked(sent.bytes);
        return;
    }
    Exchange exchange = *sent.exchange;
    exchange.answeredAt = sentAt;
    _log.Write(exchange);
    if (_keepsExchanges) {
        _exchanges.push_back(exchange);
    }
}

} // namespace Simulator
