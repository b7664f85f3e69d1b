#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

#include "protocol/status.h"

/// The instrument's frames as far as all of them are understood alike.
namespace Decode
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

/// Bytes as hexadecimal digits.
QString Hex(const QByteArray& bytes);

/// Whether the last two bytes are the checksum of those before them.
bool IsIntact(const QByteArray& frame);

AnswerKind KindOf(const QByteArray& answer);

/// The status, if the answer is an intact status and nothing else.
std::optional<Vesmar::Status> StatusIn(const QByteArray& answer);

} // namespace Decode
