#include "cli/decode/decodehistory.h"

#include <utility>

namespace Cli
{

namespace
{

using Outcome = DecodedEvent::Outcome;

/// How long the library waits for an answer, in milliseconds: by the link's own rule, and in a state that
/// repeats requests by itself.
constexpr int LinkTimeout = 4000;
constexpr int StateTimeout = 500;

Outcome OutcomeOf(const QByteArray& answer)
{
    switch (KindOf(answer)) {
    case AnswerKind::Data:
        return Outcome::Data;
    case AnswerKind::Acknowledge:
        return Outcome::Acknowledge;
    case AnswerKind::Refusal:
        return Outcome::Refusal;
    case AnswerKind::Damaged:
        return Outcome::Damaged;
    case AnswerKind::None:
        break;
    }
    return Outcome::None;
}

/// What the log says of an exchange with this outcome.
QString WordOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Acknowledge:
        return QStringLiteral("ACK");
    case Outcome::Refusal:
        return QStringLiteral("NACK");
    case Outcome::Damaged:
        return QStringLiteral("CRC Invalid");
    case Outcome::None:
        return QStringLiteral("No response");
    case Outcome::Data:
    case Outcome::Cut:
        break;
    }
    return {};
}

QString Contradiction(const QString& word, Outcome outcome)
{
    const QString due = WordOf(outcome);
    if (word == due) {
        return {};
    }
    const auto quoted = [](const QString& text) {
        return text.isEmpty() ? QStringLiteral("nothing") : QLatin1Char('"') + text + QLatin1Char('"');
    };
    return QStringLiteral("the log says %1 where the bytes mean %2").arg(quoted(word), quoted(due));
}

void AddProblem(DecodedEvent& event, const QString& problem)
{
    if (!problem.isEmpty()) {
        event.problem += (event.problem.isEmpty() ? QString() : QStringLiteral("; ")) + problem;
    }
}

DecodedEvent EventOf(DecodedEvent::Kind kind, qint64 line, const LogEntry& entry)
{
    DecodedEvent event;
    event.kind = kind;
    event.line = line;
    event.at = entry.at;
    event.text = entry.text;
    event.request = entry.request;
    event.answer = entry.answer;
    return event;
}

} // namespace

void DecodeHistory::Take(qint64 line, const LogEntry& entry)
{
    SettleHeldBack(entry);
    switch (entry.kind) {
    case LogEntry::Kind::Exchange:
        TakeExchange(line, entry);
        break;
    case LogEntry::Kind::Unasked:
        TakeUnasked(line, entry);
        break;
    case LogEntry::Kind::Note:
        TakeNote(line, entry);
        break;
    case LogEntry::Kind::State:
        TakeState(line, entry);
        break;
    case LogEntry::Kind::Echo:
        _previousTime = entry.at;
        break;
    case LogEntry::Kind::Other:
        break;
    }
}

void DecodeHistory::Finish()
{
    ReleaseHeldBack(
        Outcome::None,
        QStringLiteral("too quick for a silence: the line itself failed, or the link was closed"));
}

/// The next line with a time shows whether the silence came of the closing.
void DecodeHistory::SettleHeldBack(const LogEntry& entry)
{
    constexpr int MostHeldBack = 16;
    const bool isDecided = entry.at.isValid() || _heldBack.size() >= MostHeldBack;
    if (_heldBack.isEmpty() || !isDecided) {
        return;
    }
    if (entry.kind == LogEntry::Kind::Note && entry.text == QLatin1String("Transciever::Close")) {
        ReleaseHeldBack(Outcome::Cut, QStringLiteral("cut short by the closing of the link, not a silence"));
    } else {
        ReleaseHeldBack(Outcome::None, QStringLiteral("too quick for a silence: the line itself failed"));
    }
}

void DecodeHistory::ReleaseHeldBack(Outcome outcome, const QString& problem)
{
    const QVector<DecodedEvent> released = std::exchange(_heldBack, {});
    for (DecodedEvent event : released) {
        if (event.kind == DecodedEvent::Kind::Exchange) {
            event.outcome = outcome;
            AddProblem(event, problem);
        }
        _listener(event);
    }
}

void DecodeHistory::Tell(const DecodedEvent& event)
{
    const bool isToBeHeldBack =
        event.outcome == Outcome::None && event.within && *event.within <= Timeout(event);
    if (isToBeHeldBack || !_heldBack.isEmpty()) {
        _heldBack.append(event);
    } else {
        _listener(event);
    }
}

void DecodeHistory::TakeExchange(qint64 line, const LogEntry& entry)
{
    DecodedEvent event = EventOf(DecodedEvent::Kind::Exchange, line, entry);
    event.outcome = OutcomeOf(entry.answer);
    event.within = Within(entry.at);
    event.isInNewLink = std::exchange(_isNewLink, false);
    event.requestWords = WordsOfRequest(entry.request);
    CountAttempt(event);
    CountSector(event);
    _context.isOfTest = IsOfTest(event);
    if (event.outcome == Outcome::Data || event.outcome == Outcome::Acknowledge) {
        event.answerWords = WordsOfAnswer(entry.request, entry.answer, _context);
    }
    AddProblem(event, event.requestWords.problem);
    AddProblem(event, event.answerWords.problem);
    AddProblem(event, Contradiction(entry.word, event.outcome));
    Remember(event);
    Tell(event);
}

/// The pauses after the line before belong to nobody's exchange. A part of a millisecond counts as a whole
/// one.
std::optional<int> DecodeHistory::Within(const QTime& at) const
{
    constexpr int Day = 24 * 60 * 60 * 1000;
    if (!_previousTime.isValid()) {
        return std::nullopt;
    }
    const int elapsed = (_previousTime.msecsTo(at) + Day) % Day;
    if (elapsed > Day / 2) {
        return std::nullopt; // The clock was set back.
    }
    return qMax(elapsed - _pause, 0) + 1;
}

void DecodeHistory::CountAttempt(DecodedEvent& event)
{
    event.isRepeatedByLink = IsRepeatedByLink(event.request);
    const bool isRepeated =
        event.request == _failedRequest && !(event.isRepeatedByLink && _failedAttempts == MostAttempts);
    event.attempt = isRepeated ? _failedAttempts + 1 : 1;
}

/// What makes up recovery and an RCD test, their states send once and repeat by themselves. The rest goes the
/// link's way: recovery's change of the mode, and the stopping of a function with the status reads behind it.
bool DecodeHistory::IsRepeatedByLink(const QByteArray& request) const
{
    switch (_state) {
    case State::Recovery:
        return !request.startsWith('s');
    case State::Test:
        return request.startsWith('s') ? _statusReadsOfStop > 0
                                       : !QByteArrayLiteral("PSe").contains(request.at(0));
    case State::Unknown:
    case State::Usual:
        break;
    }
    return true;
}

/// The status reads behind a stop are no test's.
std::optional<bool> DecodeHistory::IsOfTest(const DecodedEvent& event) const
{
    if (_state == State::Unknown) {
        return std::nullopt;
    }
    return _state == State::Test && !event.isRepeatedByLink;
}

/// In milliseconds; the shorter one, until the state is known.
int DecodeHistory::Timeout(const DecodedEvent& event) const
{
    return _state != State::Unknown && event.isRepeatedByLink ? LinkTimeout : StateTimeout;
}

/// An image may have the same sector twice in a row: only a failed one is sent again.
void DecodeHistory::CountSector(DecodedEvent& event)
{
    if (event.request.startsWith('V')) {
        _sector = 0;
    }
    if (!event.request.startsWith('F')) {
        return;
    }
    if (_sector && event.attempt == 1) {
        ++*_sector;
    }
    const QString number = _sector ? QString::number(*_sector) : QStringLiteral("of an unknown number");
    event.requestWords.text.prepend(QStringLiteral("sector %1, ").arg(number));
    event.requestWords.fields.insert(QStringLiteral("sector"), _sector ? QJsonValue(*_sector) : QJsonValue());
}

/// What the lines that follow depend on.
void DecodeHistory::Remember(const DecodedEvent& event)
{
    constexpr int PauseAfterFailure = 200;
    constexpr int PauseAfterSuccess = 10;
    constexpr int CodeSize = 1;
    constexpr int StatusReadsBehindStop = 2;
    const bool hasFailed = HasFailed(event.outcome);
    _previousTime = event.at;
    _pause = hasFailed ? PauseAfterFailure : PauseAfterSuccess;
    _failedRequest = hasFailed ? event.request : QByteArray();
    _failedAttempts = hasFailed ? event.attempt : 0;
    _collected.clear();
    if (event.request.startsWith('P') && event.outcome == Outcome::Acknowledge) {
        _context.prepared = event.request.mid(CodeSize, event.request.size() - CodeSize - 2);
    }
    if (!event.request.startsWith('s')) {
        const bool isStop = event.request.startsWith('h') && event.outcome == Outcome::Acknowledge;
        _statusReadsOfStop = isStop && _state == State::Test ? StatusReadsBehindStop : 0;
    } else if (event.outcome == Outcome::Data) {
        _statusReadsOfStop = qMax(_statusReadsOfStop - 1, 0);
        if (event.answerWords.problem.isEmpty()) {
            _context.function = StatusIn(event.answer).function;
        }
    }
}

void DecodeHistory::TakeUnasked(qint64 line, const LogEntry& entry)
{
    constexpr int MostCollected = 2048;
    _previousTime = entry.at;
    _pause = 0;
    if (entry.answer.isEmpty()) {
        return;
    }
    DecodedEvent event = EventOf(DecodedEvent::Kind::Unasked, line, entry);
    _collected += entry.answer;
    event.frames = TakeFrames();
    if (!_collected.isEmpty()) {
        AddProblem(
            event,
            QStringLiteral("no whole frame yet, or a damaged one; bytes so far: %1").arg(_collected.size()));
    }
    if (_collected.size() > MostCollected) {
        _collected.clear();
    }
    Tell(event);
}

/// The frames at the front of what was collected. The library looks at nothing behind a result, or behind a
/// status that ends the test.
QVector<FrameWords> DecodeHistory::TakeFrames()
{
    QVector<FrameWords> frames;
    while (true) {
        if (const QByteArray result = _collected.left(MeasurementSize);
            result.size() == MeasurementSize && IsIntact(result)) {
            frames.append(WordsOfTestResult(result, _context));
            _collected.clear();
            return frames;
        }
        const QByteArray frame = _collected.left(StatusSize);
        if (frame.size() != StatusSize || !IsIntact(frame)) {
            return frames;
        }
        const InstrumentStatus status = StatusIn(frame);
        frames.append(WordsOfStatus(frame, true));
        _context.function = status.function;
        _collected.remove(0, StatusSize);
        if (status.functionState == Vesmar::FunctionState::Terminated) {
            _collected.clear();
            return frames;
        }
    }
}

void DecodeHistory::TakeNote(qint64 line, const LogEntry& entry)
{
    if (entry.at.isValid()) { // The link was opened or closed.
        _previousTime = entry.at;
        _pause = 0;
        _failedRequest.clear();
        _collected.clear();
        _isNewLink = true;
        _state = State::Unknown;
        _statusReadsOfStop = 0;
    }
    Tell(EventOf(DecodedEvent::Kind::Note, line, entry));
}

void DecodeHistory::TakeState(qint64 line, const LogEntry& entry)
{
    const bool isRecovery = entry.text.contains(QLatin1String("COMMUNICATION RECOVERY"));
    const bool isTest = entry.text.startsWith(QLatin1String("ENTERING RCD"));
    if (isRecovery) {
        _state = State::Recovery;
    } else {
        _state = isTest ? State::Test : State::Usual;
    }
    _statusReadsOfStop = 0;
    _failedRequest.clear();
    Tell(EventOf(DecodedEvent::Kind::State, line, entry));
}

} // namespace Cli
