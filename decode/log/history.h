#pragma once

#include <QByteArray>
#include <QTime>
#include <QVector>

#include <optional>

#include "decode/events/event.h"
#include "decode/events/exchangerules.h"
#include "decode/events/measurementspan.h"
#include "decode/frames/answers.h"
#include "decode/lines/logentry.h"
#include "decode/log/heldback.h"

namespace Decode
{

/// Reads a log line by line and says what it tells. It keeps no more of the past than the next line needs.
class History
{
public:
    /// The listener hears of each event, in the order of the log.
    explicit History(HeldBack::Listener listener) : _events(std::move(listener)) {}

    void Read(qint64 line, const LogEntry& entry);

    /// The log has ended: tells what was held back.
    void Finish() { _events.Finish(); }

private:
    void ReadExchange(qint64 line, const LogEntry& entry);
    void ReadUnasked(qint64 line, const LogEntry& entry);
    void ReadNote(qint64 line, const LogEntry& entry);
    void ReadState(qint64 line, const LogEntry& entry);

    std::optional<int> Within(const QTime& at) const;
    void CountAttempt(Event& event);
    void CountSector(Event& event);
    void Remember(const Event& event);
    QVector<FrameWords> ConsumeFrames();

    HeldBack _events;
    ExchangeRules _rules;
    MeasurementSpan _measurement;
    FrameContext _context;
    QTime _previousTime;
    int _pause = 0; ///< After the line of that time, in milliseconds.
    QByteArray _failedRequest;
    int _failedAttempts = 0;
    std::optional<int> _sector; ///< The last one of this update that was sent; none before an update.
    QByteArray _collected;      ///< Sent unasked, and no whole frame yet.
    bool _isNewLink = true;
};

} // namespace Decode
