#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

#include <Vesmar/error.h>
#include <Vesmar/functionstate.h>
#include <Vesmar/measurementtype.h>
#include <Vesmar/operationmode.h>
#include <Vesmar/starttestresult.h>

/// The instrument's frames as far as every one of them is understood alike, and its status.
namespace Cli
{

constexpr int ChecksumSize = 2; ///< In bytes, at the end of every frame, low byte first.
constexpr int StatusSize = 4;   ///< Of a status, in bytes, with its checksum.

/// What an answer is, as the library sees it.
enum class AnswerKind { Data, Acknowledge, Refusal, Damaged, None };

/// The instrument's status.
struct InstrumentStatus {
    Vesmar::OperationMode mode;
    Vesmar::MeasurementType function;
    Vesmar::Error error;
    bool hasNewMeasurement;
    std::optional<Vesmar::FunctionState> functionState;     ///< While a function is active.
    std::optional<Vesmar::StartTestResult> startTestResult; ///< While none is.
};

/// Bytes as hexadecimal digits.
QString Hex(const QByteArray& bytes);

/// The byte at this position; 0 behind the end of the frame.
unsigned ByteAt(const QByteArray& frame, int position);

/// Whether the last two bytes are the checksum of those before them.
bool IsIntact(const QByteArray& frame);

AnswerKind KindOf(const QByteArray& answer);

/// Whether the answer is an intact status and nothing else.
bool IsStatus(const QByteArray& answer);

/// The status in a frame; missing bytes count as 0. The error is the instrument's own number.
InstrumentStatus StatusIn(const QByteArray& frame);

/// The number that the library gives an error of the instrument in a state that tests residual-current
/// devices.
Vesmar::Error InTest(Vesmar::Error error);

/// Whether the function tests residual-current devices.
bool IsRCD(Vesmar::MeasurementType function);

} // namespace Cli
