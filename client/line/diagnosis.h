#pragma once

#include <Vesmar/error.h>
#include <Vesmar/operationmode.h>

namespace VesmarClient
{

/// Why the link to the instrument does not come up.
enum class LinkFailure {
    DeviceMissing,
    NoPermission,
    DeviceUnusable,
    UpdateMode, ///< The instrument answers, and waits for firmware.
    Refused,    ///< The instrument refuses every request.
    Damaged,    ///< The instrument's answers arrive damaged.
    WrongMode,  ///< The instrument answers, but does not leave another mode.
    FellSilent, ///< The instrument answered once, and does not any more.
    Incomplete, ///< The instrument answers, but its clocks were not read in time.
    NoProperAnswer,
    NoAnswer
};

/// What is known of a link that has not come up in the time that it was given.
struct Situation {
    int openError;  ///< The error number of an attempt to open the serial device; 0 if that works.
    bool hasAnswer; ///< The instrument's identity was read at least once.
    Vesmar::OperationMode mode;
    Vesmar::Error error;
};

/// Tries to open the serial device, which changes nothing about it: 0, or the error number.
int TryToOpenSerialDevice();

/// What is wrong.
LinkFailure Diagnose(const Situation& situation);

/// Whether the library tells with this error that the link is lost.
bool IsLinkError(Vesmar::Error error);

/// The error if it says why the link does not work, otherwise none: `CommunicationRecovery`, with which the
/// library goes on trying, is no reason.
Vesmar::Error ReasonForLoss(Vesmar::Error error);

} // namespace VesmarClient
