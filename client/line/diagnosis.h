#pragma once

#include <Vesmar/error.h>

namespace VesmarClient
{

/// Whether the library tells with this error that the link is lost.
bool IsLinkError(Vesmar::Error error);

/// The error if it says why the link does not work, otherwise none: `CommunicationRecovery`, with which the
/// library goes on trying, is no reason.
Vesmar::Error ReasonForLoss(Vesmar::Error error);

} // namespace VesmarClient
