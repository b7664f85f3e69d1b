#include "decode/log/heldback.h"

#include <utility>

namespace Decode
{

void HeldBack::Add(const Event& event, int timeout)
{
    const bool isTooQuick = event.outcome == AnswerKind::None && event.within && *event.within <= timeout;
    if (isTooQuick || !_events.isEmpty()) {
        _events.append(event);
    } else {
        _listener(event);
    }
}

void HeldBack::Decide(const LogEntry& next)
{
    constexpr int MostEvents = 16;
    const bool isDecided = next.at.isValid() || _events.size() >= MostEvents;
    if (_events.isEmpty() || !isDecided) {
        return;
    }
    if (next.kind == LogEntry::Kind::Note && next.text == QLatin1String("Transciever::Close")) {
        Release(AnswerKind::Cut, Words::tr("cut short by the closing of the link, not a silence"));
    } else {
        Release(AnswerKind::None, Words::tr("too quick for a silence: the line itself failed"));
    }
}

void HeldBack::Finish()
{
    Release(AnswerKind::None,
            Words::tr("too quick for a silence: the line itself failed, or the link was closed"));
}

void HeldBack::Release(AnswerKind outcome, const QString& problem)
{
    const QVector<Event> released = std::exchange(_events, {});
    for (Event event : released) {
        if (event.kind == Event::Kind::Exchange) {
            event.outcome = outcome;
            event.AddProblem(problem);
        }
        _listener(event);
    }
}

} // namespace Decode
