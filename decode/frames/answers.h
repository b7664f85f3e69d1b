#pragma once

#include <QByteArray>

#include <optional>

#include <Vesmar/measurementtype.h>

#include "decode/frames/words.h"
#include "protocol/payload.h"

/// What the instrument sends, in words.
namespace Decode
{

/// What the words of a frame depend on: what the frames before it have told.
struct FrameContext {
    std::optional<Vesmar::MeasurementType> function; ///< Of the last status.
    std::optional<Vesmar::PreparePayload> prepared;  ///< By the last prepare request.
    std::optional<bool>
        isOfTest; ///< Whether the library reads a status as one of an RCD test; none if unknown.
};

/// The words of an answer of the kind `Data` or `Acknowledge`.
FrameWords WordsOfAnswer(const QByteArray& request, const QByteArray& answer, const FrameContext& context);

/// The words of a status frame, and of the result that an RCD test sends by itself.
FrameWords WordsOfStatus(const QByteArray& frame, std::optional<bool> isOfTest);
FrameWords WordsOfTestResult(const QByteArray& frame, const FrameContext& context);

} // namespace Decode
