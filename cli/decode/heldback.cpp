#include "cli/decode/heldback.h"

#include <utility>

namespace Cli
{

void HeldBack::Add(const DecodedEvent& event, int timeout)
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
        Release(AnswerKind::Cut, QStringLiteral("cut short by the closing of the link, not a silence"));
    } else {
        Release(AnswerKind::None, QStringLiteral("too quick for a silence: the line itself failed"));
    }
}

void HeldBack::Finish()
{
    Release(AnswerKind::None,
            QStringLiteral("too quick for a silence: the line itself failed, or the link was closed"));
}

void HeldBack::Release(AnswerKind outcome, const QString& problem)
{
    const QVector<DecodedEvent> released = std::exchange(_events, {});
    for (DecodedEvent event : released) {
        if (event.kind == DecodedEvent::Kind::Exchange) {
            event.outcome = outcome;
            event.AddProblem(problem);
        }
        _listener(event);
    }
}

} // namespace Cli
