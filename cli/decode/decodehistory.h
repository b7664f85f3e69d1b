#pragma once

#include <QByteArray>
#include <QTime>
#include <QVector>

#include <functional>
#include <optional>

#include "cli/decode/decodedevent.h"
#include "cli/decode/logentry.h"

namespace Cli
{

/// Follows what a log tells, line by line, and says what it means. It keeps no more of the past than the next
/// line needs.
class DecodeHistory
{
public:
    using Listener = std::function<void(const DecodedEvent&)>;

    /// Each event goes to the listener, in the order of the log.
    explicit DecodeHistory(Listener listener) : _listener(std::move(listener)) {}

    void Take(qint64 line, const LogEntry& entry);
    /// Tells of what was held back until more is known.
    void Finish();

private:
    /// The library's, as far as it decides how exchanges go.
    enum class State { Unknown, Usual, Recovery, Test };

    void SettleHeldBack(const LogEntry& entry);
    void Tell(const DecodedEvent& event);
    void ReleaseHeldBack(DecodedEvent::Outcome outcome, const QString& problem);

    void TakeExchange(qint64 line, const LogEntry& entry);
    void TakeUnasked(qint64 line, const LogEntry& entry);
    void TakeNote(qint64 line, const LogEntry& entry);
    void TakeState(qint64 line, const LogEntry& entry);

    std::optional<int> Within(const QTime& at) const;
    bool IsRepeatedByLink(const QByteArray& request) const;
    std::optional<bool> IsOfTest(const DecodedEvent& event) const;
    int Timeout(const DecodedEvent& event) const;
    void CountAttempt(DecodedEvent& event);
    void CountSector(DecodedEvent& event);
    void Remember(const DecodedEvent& event);
    QVector<FrameWords> TakeFrames();

    Listener _listener;
    QVector<DecodedEvent> _heldBack; ///< A quick silence, and what followed it without a time.
    FrameContext _context;
    QTime _previousTime;
    int _pause = 0; ///< After the line of that time, in milliseconds.
    QByteArray _failedRequest;
    int _failedAttempts = 0;
    std::optional<int> _sector; ///< The last one of this update that was sent; none before an update.
    QByteArray _collected;      ///< Sent unasked, and no whole frame yet.
    State _state = State::Unknown;
    int _statusReadsOfStop = 0; ///< Those to come, of a state that tests and has stopped a function.
    bool _isNewLink = true;
};

} // namespace Cli
