#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include <optional>

#include <Vesmar/error.h>
#include <Vesmar/measurementtype.h>

/// The instrument's frames in words.
namespace Cli
{

/// What a frame tells: for people, for programs, and what is wrong with it (empty where nothing is).
struct FrameWords {
    QString text;
    QJsonObject fields;
    QString problem;
    std::optional<Vesmar::Error> error; ///< What the library reports when it takes the frame.
};

/// What an answer is, as the library sees it.
enum class AnswerKind { Data, Acknowledge, Refusal, Damaged, None };

/// What frames before a frame have told, and what it depends on.
struct FrameContext {
    std::optional<Vesmar::MeasurementType> function; ///< Of the last status.
    QByteArray prepared;                             ///< Payload of the last prepare request; empty for none.
};

constexpr int StatusSize = 4;       ///< Of a status, in bytes, with its checksum.
constexpr int MeasurementSize = 26; ///< Of a measurement, and of the result of an RCD test.

/// Whether the last two bytes are the checksum of those before them.
bool IsIntact(const QByteArray& frame);

AnswerKind KindOf(const QByteArray& answer);

/// The request's name among the fields.
FrameWords WordsOfRequest(const QByteArray& request);

/// Of an answer of the kind `Data` or `Acknowledge`.
FrameWords WordsOfAnswer(const QByteArray& request, const QByteArray& answer, const FrameContext& context);

/// Of a status frame and of the result that an RCD test sends by itself.
FrameWords WordsOfStatus(const QByteArray& frame);
FrameWords WordsOfTestResult(const QByteArray& frame, const FrameContext& context);

/// The function that a status frame names.
Vesmar::MeasurementType FunctionOf(const QByteArray& status);

} // namespace Cli
