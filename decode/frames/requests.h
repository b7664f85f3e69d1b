#pragma once

#include <QByteArray>
#include <QDateTime>

#include "decode/frames/frame.h"
#include "decode/frames/words.h"

/// The requests to the instrument, in words.
namespace Decode
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

/// What people call the request.
QString NameOfRequest(const QByteArray& request);

/// The words of a request, without its name.
FrameWords WordsOfRequest(const QByteArray& request);

} // namespace Decode
