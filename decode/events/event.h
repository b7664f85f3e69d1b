#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTime>
#include <QVector>

#include <optional>

#include <VesmarClient/result.h>

#include "decode/frames/frame.h"
#include "decode/frames/words.h"

namespace Decode
{

/// How often the link tries an exchange before it gives up.
constexpr int MostAttempts = 3;

/// Something that a log tells, with what is known about it from the lines before.
struct Event {
    /// An exchange is a request to the instrument and what it has answered.
    enum class Kind { Exchange, Unasked, Note, State };
    /// Whether a function of the instrument begins or ends with the event.
    enum class Measurement { Unchanged, Begun, Ended };

    Kind kind = Kind::Note;
    Measurement measurement = Measurement::Unchanged;
    qint64 line = 0; ///< Counts from 1.
    QTime at;        ///< In UTC; invalid where the log has none.
    QString text;    ///< Of a note or a state, as the library has written it.

    QByteArray request;
    QByteArray answer; ///< Or what was sent unasked.
    FrameWords requestWords;
    FrameWords answerWords;
    QVector<FrameWords> frames; ///< Of what was sent unasked.
    AnswerKind outcome = AnswerKind::Data;
    std::optional<int> within; ///< Milliseconds that the exchange took at most.
    int attempt = 1;           ///< Counts the same request after failures.
    bool isRepeatedByLink =
        true;                 ///< Three attempts belong to one exchange; else a state repeats it as it likes.
    bool isInNewLink = false; ///< The first exchange since the link was opened, or of the log.
    QString problem;          ///< Empty where there is none.

    /// Tells a problem beside those that are told already; an empty text is none.
    void AddProblem(const QString& added)
    {
        if (!added.isEmpty()) {
            problem += (problem.isEmpty() ? QString() : QStringLiteral("; ")) + added;
        }
    }

    bool HasFailed() const
    {
        return outcome == AnswerKind::Refusal || outcome == AnswerKind::Damaged ||
               outcome == AnswerKind::None;
    }

    /// Whether the link has given the request up.
    bool IsGivenUp() const
    {
        return kind == Kind::Exchange && HasFailed() && isRepeatedByLink && attempt == MostAttempts;
    }
};

/// What the event tells of readings; empty where it tells none. A log has no dates: the result has none
/// either.
VesmarClient::Result ResultOf(const Event& event);

/// What the event is called: the request's name, the name of the state. Empty for a note.
QString TitleOf(const Event& event);

/// What the event tells under its title, in pieces that each begin a line. The last one tells the problem, if
/// there is one.
QStringList PiecesOf(const Event& event);

} // namespace Decode
