#pragma once

#include <VesmarClient/failure.h>

#include <Vesmar/error.h>

namespace VesmarClient
{

/// A failure in words of its own. Both texts are translated; they are marked with `QT_TRANSLATE_NOOP` where
/// they stand.
Failure FailureNamed(const char* name, const char* whatHappened, const char* nextStep);

/// Another job is under way.
Failure Busy();

/// The link's state does not allow what was asked for.
Failure NotConnected(LinkState state);

/// The link was lost before something was done, which the text says. The driver's present error may say why.
Failure LinkLost(const char* notDone, Vesmar::Error error);

/// Something may still run. The driver's present error may say why that is not known.
Failure StopNotConfirmed(Vesmar::Error error);

} // namespace VesmarClient
