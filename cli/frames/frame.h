#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

#include <Vesmar/error.h>

#include "cli/words/format.h"
#include "protocol/status.h"

/// The instrument's frames as far as all of them are understood alike.
namespace Cli
{

/// What an answer is, as the library sees it.
enum class AnswerKind {
    Data,
    Acknowledge,
    Refusal,
    Damaged,
    None,
    Cut ///< None, because the link was closed meanwhile.
};

/// What a frame tells: for people, for programs, and what is wrong with it (empty where nothing is).
struct FrameWords {
    QString text;
    QJsonObject fields;
    QString problem;
    std::optional<Vesmar::Error>
        error; ///< What the library reports when it accepts the frame, where that is certain.
};

/// The words of one value, which is a field of this name.
FrameWords ValueWords(const char* name, const Shown& value);

/// Bytes as hexadecimal digits.
QString Hex(const QByteArray& bytes);

/// Whether the last two bytes are the checksum of those before them.
bool IsIntact(const QByteArray& frame);

AnswerKind KindOf(const QByteArray& answer);

/// The status, if the answer is an intact status and nothing else.
std::optional<Vesmar::Status> StatusIn(const QByteArray& answer);

} // namespace Cli
