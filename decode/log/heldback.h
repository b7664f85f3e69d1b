#pragma once

#include <QVector>

#include <functional>

#include "decode/events/event.h"
#include "decode/lines/logentry.h"

namespace Decode
{

/// Passes events on. It holds back an exchange that was silent for less time than the library waits, with all
/// that follows without a time, until the next line with a time shows whether the closing of the link cut the
/// exchange short.
class HeldBack
{
public:
    using Listener = std::function<void(const Event&)>;

    explicit HeldBack(Listener listener) : _listener(std::move(listener)) {}

    /// Passes the event on, or holds it back. The timeout is that of an exchange, in milliseconds.
    void Add(const Event& event, int timeout = 0);

    /// Passes on what the next line of the log decides.
    void Decide(const LogEntry& next);

    /// Passes on what is left at the end of the log.
    void Finish();

private:
    void Release(AnswerKind outcome, const QString& problem);

    Listener _listener;
    QVector<Event> _events;
};

} // namespace Decode
