#include "decode/log/history.h"

#include <array>
#include <utility>

#include "client/words/named.h"
#include "decode/frames/requests.h"
#include "protocol/checksum.h"
#include "protocol/frames.h"

namespace Decode
{

namespace
{

namespace Command = Vesmar::Command;

/// What the log says of an exchange with this outcome; nothing of the others.
constexpr std::array<VesmarClient::Named<AnswerKind>, 4> WordsInLog{{
    {AnswerKind::Acknowledge, "ACK"},
    {AnswerKind::Refusal, "NACK"},
    {AnswerKind::Damaged, "CRC Invalid"},
    {AnswerKind::None, "No response"},
}};

QString Contradiction(const QString& word, AnswerKind outcome)
{
    const QString due = VesmarClient::NameIn(WordsInLog, outcome);
    if (word == due) {
        return {};
    }
    const auto quoted = [](const QString& text) {
        return text.isEmpty() ? Words::tr("nothing") : QLatin1Char('"') + text + QLatin1Char('"');
    };
    return Words::tr("the log says %1 where the bytes mean %2").arg(quoted(word), quoted(due));
}

Event EventOf(Event::Kind kind, qint64 line, const LogEntry& entry)
{
    Event event;
    event.kind = kind;
    event.line = line;
    event.at = entry.at;
    event.text = entry.text;
    event.request = entry.request;
    event.answer = entry.answer;
    return event;
}

} // namespace

void History::Read(qint64 line, const LogEntry& entry)
{
    _events.Decide(entry);
    switch (entry.kind) {
    case LogEntry::Kind::Exchange:
        ReadExchange(line, entry);
        break;
    case LogEntry::Kind::Unasked:
        ReadUnasked(line, entry);
        break;
    case LogEntry::Kind::Note:
        ReadNote(line, entry);
        break;
    case LogEntry::Kind::State:
        ReadState(line, entry);
        break;
    case LogEntry::Kind::Echo:
        _previousTime = entry.at;
        break;
    case LogEntry::Kind::Other:
        break;
    }
}

void History::ReadExchange(qint64 line, const LogEntry& entry)
{
    Event event = EventOf(Event::Kind::Exchange, line, entry);
    event.outcome = KindOf(entry.answer);
    event.within = Within(entry.at);
    event.isInNewLink = std::exchange(_isNewLink, false);
    event.requestWords = WordsOfRequest(entry.request);
    CountAttempt(event);
    CountSector(event);
    _context.isOfTest = _rules.IsOfTest(event);
    if (event.outcome == AnswerKind::Data || event.outcome == AnswerKind::Acknowledge) {
        event.answerWords = WordsOfAnswer(entry.request, entry.answer, _context);
    }
    event.AddProblem(event.requestWords.problem);
    event.AddProblem(event.answerWords.problem);
    event.AddProblem(Contradiction(entry.word, event.outcome));
    event.measurement = _measurement.Watch(event);
    Remember(event);
    _events.Add(event, _rules.Timeout(event));
}

/// The pause after the line before belongs to no exchange. A part of a millisecond counts as a whole one.
std::optional<int> History::Within(const QTime& at) const
{
    const std::optional<int> elapsed = MillisecondsBetween(_previousTime, at);
    return elapsed ? std::optional(qMax(*elapsed - _pause, 0) + 1) : std::nullopt;
}

void History::CountAttempt(Event& event)
{
    event.isRepeatedByLink = _rules.IsRepeatedByLink(event.request);
    const bool isRepeated =
        event.request == _failedRequest && !(event.isRepeatedByLink && _failedAttempts == MostAttempts);
    event.attempt = isRepeated ? _failedAttempts + 1 : 1;
}

/// An image may have the same sector twice in a row: the same request is a repetition only after a failure.
void History::CountSector(Event& event)
{
    if (event.request.startsWith(Command::InitializeUpdate)) {
        _sector = 0;
    }
    if (!event.request.startsWith(Command::ProgramFlashSector)) {
        return;
    }
    if (_sector && event.attempt == 1) {
        ++*_sector;
    }
    const QString number = _sector ? QString::number(*_sector) : Words::tr("of an unknown number");
    event.requestWords.text = Words::tr("sector %1, %2").arg(number, event.requestWords.text);
    event.requestWords.fields.append({"sector", _sector ? Value(*_sector) : Value()});
}

/// Keeps what the meaning of the next lines depends on.
void History::Remember(const Event& event)
{
    constexpr int PauseAfterFailure = 200;
    constexpr int PauseAfterSuccess = 10;
    constexpr int CodeSize = 1;
    const bool hasFailed = event.HasFailed();
    _previousTime = event.at;
    _pause = hasFailed ? PauseAfterFailure : PauseAfterSuccess;
    _failedRequest = hasFailed ? event.request : QByteArray();
    _failedAttempts = hasFailed ? event.attempt : 0;
    _collected.clear();
    _rules.EndExchange(event);
    if (event.request.startsWith(Command::PrepareMeasurement) && event.outcome == AnswerKind::Acknowledge) {
        const int size = event.request.size() - CodeSize - Vesmar::ChecksumSize;
        _context.prepared = Vesmar::DecodePayload(event.request.mid(CodeSize, size));
    }
    if (event.request.startsWith(Command::Status) && event.outcome == AnswerKind::Data &&
        event.answerWords.problem.isEmpty()) {
        _context.function = Vesmar::DecodeStatus(event.answer).function;
    }
}

void History::ReadUnasked(qint64 line, const LogEntry& entry)
{
    constexpr int MostCollected = 2048;
    _previousTime = entry.at;
    _pause = 0;
    if (entry.answer.isEmpty()) {
        return;
    }
    Event event = EventOf(Event::Kind::Unasked, line, entry);
    _collected += entry.answer;
    event.frames = ConsumeFrames();
    event.measurement = _measurement.Watch(event);
    if (!_collected.isEmpty()) {
        event.AddProblem(
            Words::tr("no whole frame yet, or a damaged one; bytes so far: %1").arg(_collected.size()));
    }
    if (_collected.size() > MostCollected) {
        _collected.clear();
    }
    _events.Add(event);
}

/// The whole frames at the front of what was collected. The library looks at nothing behind a result, or
/// behind a status that ends the test.
QVector<FrameWords> History::ConsumeFrames()
{
    QVector<FrameWords> frames;
    while (true) {
        if (const QByteArray result = _collected.left(Vesmar::MeasurementFrameSize);
            result.size() == Vesmar::MeasurementFrameSize && IsIntact(result)) {
            frames.append(WordsOfTestResult(result, _context));
            _collected.clear();
            return frames;
        }
        const QByteArray frame = _collected.left(Vesmar::StatusFrameSize);
        const auto status = StatusIn(frame);
        if (!status) {
            return frames;
        }
        frames.append(WordsOfStatus(frame, true));
        _context.function = status->function;
        _collected.remove(0, frame.size());
        if (status->functionState == Vesmar::FunctionState::Terminated) {
            _collected.clear();
            return frames;
        }
    }
}

void History::ReadNote(qint64 line, const LogEntry& entry)
{
    if (entry.at.isValid()) { // The link was opened or closed.
        _previousTime = entry.at;
        _pause = 0;
        _failedRequest.clear();
        _collected.clear();
        _isNewLink = true;
        _rules.ForgetState();
    }
    _events.Add(EventOf(Event::Kind::Note, line, entry));
}

void History::ReadState(qint64 line, const LogEntry& entry)
{
    _rules.EnterState(entry.text);
    _failedRequest.clear();
    _events.Add(EventOf(Event::Kind::State, line, entry));
}

} // namespace Decode
