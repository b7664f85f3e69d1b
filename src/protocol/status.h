#pragma once

#include <optional>

#include <QByteArray>

#include <Vesmar/error.h>
#include <Vesmar/functionstate.h>
#include <Vesmar/measurementtype.h>
#include <Vesmar/operationmode.h>
#include <Vesmar/starttestresult.h>

namespace Vesmar
{

/// What the instrument says of itself.
struct Status {
    bool hasNewMeasurement;
    OperationMode mode;
    MeasurementType function;                       ///< The active one; `Monitoring` where none is.
    Error error;                                    ///< The instrument's own number, 0 to 15.
    int processStatus;                              ///< One of the two below, as a number.
    std::optional<FunctionState> functionState;     ///< While a function is active.
    std::optional<StartTestResult> startTestResult; ///< While none is.
};

/// How many bits of a status name the function. The instrument sends five; one request of the RCD tests reads
/// four of them.
enum class FunctionBits { Five, Four };

/// The status in a frame; bytes that are missing count as 0.
Status DecodeStatus(const QByteArray& frame, FunctionBits bits = FunctionBits::Five);

/// The library's number for an error that the instrument reports during an RCD test.
Error ErrorInRCDTest(Error error);

/// What the instrument found wrong with the object under test: the first byte of its answer; clean where
/// there is none.
Error DecodeObjectCheck(const QByteArray& answer);

} // namespace Vesmar
