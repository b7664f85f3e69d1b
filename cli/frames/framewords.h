#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

#include <Vesmar/error.h>
#include <Vesmar/measurementtype.h>

#include "cli/frames/frame.h"

/// The instrument's frames in words.
namespace Cli
{

/// What a frame tells: for people, for programs, and what is wrong with it (empty where nothing is).
struct FrameWords {
    QString text;
    QJsonObject fields;
    QString problem;
    std::optional<Vesmar::Error>
        error; ///< What the library reports when it takes the frame, where that is certain.
};

/// What frames before a frame have told, and what it depends on.
struct FrameContext {
    std::optional<Vesmar::MeasurementType> function; ///< Of the last status.
    QByteArray prepared;                             ///< Payload of the last prepare request; empty for none.
    std::optional<bool>
        isOfTest; ///< Whether the library takes a status as one of an RCD test; none if unknown.
};

constexpr int MeasurementSize = 26; ///< Of a measurement, and of the result of an RCD test.

/// The request's name among the fields.
FrameWords WordsOfRequest(const QByteArray& request);

/// Of an answer of the kind `Data` or `Acknowledge`.
FrameWords WordsOfAnswer(const QByteArray& request, const QByteArray& answer, const FrameContext& context);

/// Of a status frame and of the result that an RCD test sends by itself.
FrameWords WordsOfStatus(const QByteArray& frame, std::optional<bool> isOfTest);
FrameWords WordsOfTestResult(const QByteArray& frame, const FrameContext& context);

} // namespace Cli
