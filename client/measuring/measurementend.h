#pragma once

#include <VesmarClient/failure.h>

#include "client/sessions/measurementsession.h"

namespace VesmarClient
{

/// What the session does, in the words of a job.
Phase PhaseOf(MeasurementSession::Phase phase);

/// How the measurement has ended. One that is complete although there were gaps in it is interrupted.
Outcome OutcomeOf(const MeasurementSession& session, bool hasGaps);

/// Why the measurement is not complete, or is not confirmed to have stopped; empty where neither is so. The
/// driver's present error may say why the link was lost.
Failure FailureOf(const MeasurementSession& session, Vesmar::Error presentError);

/// The application did not say in time that it was still there.
Failure KeepAliveMissed();

} // namespace VesmarClient
