#pragma once

#include <QByteArray>
#include <QDateTime>

#include "cli/frames/frame.h"

/// The requests to the instrument, in words.
namespace Cli
{

/// A request, with the size of its data and the kind of answer that is due.
struct RequestKind {
    char letter;
    const char* name;
    int dataSize; ///< Negative for any size.
    AnswerKind due;
};

/// Null for a request that does not exist.
const RequestKind* KindOfRequest(const QByteArray& request);

/// The date in a request or an answer, in UTC.
QDateTime DateIn(const QByteArray& bytes);

/// The words of a request. The fields hold its name.
FrameWords WordsOfRequest(const QByteArray& request);

} // namespace Cli
