#pragma once

#include <VesmarClient/failure.h>

#include "client/sessions/updatesession.h"

namespace VesmarClient
{

/// Why the update has not been completed, and what has become of the instrument's firmware; empty where it
/// was completed or aborted. The driver's present error may say why the link was lost.
Failure ReasonOf(const UpdateSession& session, Vesmar::Error presentError);

} // namespace VesmarClient
