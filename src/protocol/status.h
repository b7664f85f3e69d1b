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

/// What a status tells.
struct Status {
    bool hasNewMeasurement;
    OperationMode mode;
    MeasurementType function;                   ///< The active function; `Monitoring` while none is active.
    Error error;                                ///< The instrument's own number, 0 to 15.
    int processStatus;                          ///< The number of the one of the next two that is present.
    std::optional<FunctionState> functionState; ///< Present while a function is active.
    std::optional<StartTestResult> startTestResult; ///< Present while no function is active.
};

/// How many bits of a status name the function. The instrument sends five; one request of the RCD tests reads
/// four of them.
enum class FunctionBits { Five, Four };

/// Decodes the status in a frame. Bytes that are missing count as 0.
Status DecodeStatus(const QByteArray& frame, FunctionBits bits = FunctionBits::Five);

/// Returns the library's number for an error that the instrument reports during an RCD test.
Error ErrorInRCDTest(Error error);

/// Decodes what the instrument found wrong with the object under test. An answer without a byte counts as
/// clean.
Error DecodeObjectCheck(const QByteArray& answer);

} // namespace Vesmar
