#pragma once

#include <QByteArray>
#include <QString>
#include <QTime>
#include <QVector>

#include <optional>

#include "cli/frames/frame.h"

namespace Cli
{

/// How often the link tries an exchange before it gives up.
constexpr int MostAttempts = 3;

/// Something that a log tells, with what is known about it from the lines before.
struct DecodedEvent {
    enum class Kind { Exchange, Unasked, Note, State };

    Kind kind = Kind::Note;
    qint64 line = 0; ///< Counts from 1.
    QTime at;        ///< In UTC; invalid where the log has none.
    QString text;    ///< Of a note or a state.

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

} // namespace Cli
