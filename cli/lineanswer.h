#pragma once

#include <QByteArray>

#include <optional>

#include <Vesmar/error.h>
#include <Vesmar/functionstate.h>
#include <Vesmar/measurementtype.h>
#include <Vesmar/operationmode.h>
#include <Vesmar/starttestresult.h>

namespace Cli
{

/// The request for the instrument's status, as it goes over the line.
QByteArray StatusRequest();

/// What came back for a request for the status.
enum class LineAnswer {
    Proper,
    Refused,
    Damaged, ///< A wrong checksum or length.
    Silent   ///< Nothing came.
};

/// What the bytes are that came back.
LineAnswer Classify(const QByteArray& answer);

/// The instrument's status.
struct LineStatus {
    Vesmar::OperationMode mode;
    Vesmar::MeasurementType function;
    Vesmar::Error error;
    std::optional<Vesmar::FunctionState> functionState;     ///< While a function is active.
    std::optional<Vesmar::StartTestResult> startTestResult; ///< While none is.
};

/// The status in a proper answer.
LineStatus StatusIn(const QByteArray& answer);

} // namespace Cli
