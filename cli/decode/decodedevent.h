#pragma once

#include <QByteArray>
#include <QString>
#include <QTime>
#include <QVector>

#include <optional>

#include "cli/frames/framewords.h"

namespace Cli
{

/// Something that a log tells, with what is known about it from the lines before.
struct DecodedEvent {
    enum class Kind { Exchange, Unasked, Note, State };
    /// What became of an exchange.
    enum class Outcome { Data, Acknowledge, Refusal, Damaged, None, Cut };

    Kind kind = Kind::Note;
    qint64 line = 0; ///< Counts from 1.
    QTime at;        ///< In UTC; invalid where the log has none.
    QString text;    ///< Of a note or a state.

    QByteArray request;
    QByteArray answer; ///< Or what was sent unasked.
    FrameWords requestWords;
    FrameWords answerWords;
    QVector<FrameWords> frames; ///< Of what was sent unasked.
    Outcome outcome = Outcome::Data;
    std::optional<int> within; ///< Milliseconds that the exchange took at most.
    int attempt = 1;           ///< Counts the same request after failures.
    bool isRepeatedByLink =
        true;                 ///< Three attempts belong to one exchange; else a state repeats it as it likes.
    bool isInNewLink = false; ///< The first exchange since the link was opened, or of the log.
    QString problem;          ///< Empty where there is none.
};

inline bool HasFailed(DecodedEvent::Outcome outcome)
{
    return outcome == DecodedEvent::Outcome::Refusal || outcome == DecodedEvent::Outcome::Damaged ||
           outcome == DecodedEvent::Outcome::None;
}

/// How often the link tries an exchange before it gives up.
constexpr int MostAttempts = 3;

/// Whether the link has given the request up.
inline bool IsGivenUp(const DecodedEvent& event)
{
    return event.kind == DecodedEvent::Kind::Exchange && HasFailed(event.outcome) && event.isRepeatedByLink &&
           event.attempt == MostAttempts;
}

} // namespace Cli
