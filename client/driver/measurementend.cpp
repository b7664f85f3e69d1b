#include "client/driver/measurementend.h"

#include "client/driver/failures.h"
#include "client/line/diagnosis.h"
#include "client/values/conversions.h"

namespace VesmarClient
{

namespace
{

using SessionOutcome = MeasurementSession::Outcome;
using SessionPhase = MeasurementSession::Phase;
using Reason = MeasurementSession::Reason;

Failure FailureOf(Reason reason, Vesmar::Error firstError)
{
    switch (reason) {
    case Reason::None:
        break;
    case Reason::Error:
        return Failure::ofError(ErrorOf(firstError));
    case Reason::NotPrepared:
        return FailureNamed("not-prepared", "The instrument did not prepare the measurement in time.",
                            "Check how the appliance is connected, and measure again.");
    case Reason::NotStarted:
        return FailureNamed("not-started", "The instrument did not start the measurement in time.",
                            "Check the mains supply and how the appliance is connected, and measure again.");
    case Reason::NoResult:
        return FailureNamed("no-result",
                            "The measurement ended early or without a reading, and no error was seen.",
                            "Measure again.");
    case Reason::FunctionLost:
        return FailureNamed("function-lost",
                            "The instrument gave the measurement up in the middle, for another function or "
                            "for a restart.",
                            "Measure again.");
    case Reason::OtherFunction:
        return FailureNamed("other-function",
                            "The instrument is busy with a function that was not started here, and does not "
                            "stop it.",
                            "Switch the instrument off, and on again.");
    }
    return {};
}

/// The measurement may still run. Where the link is lost, its error stands beside the warning.
Failure StopNotConfirmed(const MeasurementSession& session, Vesmar::Error presentError)
{
    Failure failure = FailureNamed(
        "stop-not-confirmed",
        "It is not confirmed that the instrument has stopped: it may still be running, and high voltage may "
        "be on.",
        "Cut the mains of the instrument, or switch it off, before anybody touches the appliance.");
    if (session.CurrentOutcome() == SessionOutcome::LinkLost) {
        const Failure loss = Failure::ofError(ErrorOf(ReasonForLoss(presentError)));
        failure.code = loss.code;
        failure.causes = loss.causes;
    }
    return failure;
}

} // namespace

Phase PhaseOf(SessionPhase phase)
{
    switch (phase) {
    case SessionPhase::AwaitingIdle:
        return Phase::AwaitingIdle;
    case SessionPhase::Preparing:
        return Phase::Preparing;
    case SessionPhase::Checking:
        return Phase::Checking;
    case SessionPhase::AwaitingMains:
        return Phase::AwaitingMains;
    case SessionPhase::Starting:
        return Phase::Starting;
    case SessionPhase::Running:
        return Phase::Running;
    case SessionPhase::Stopping:
        return Phase::Stopping;
    case SessionPhase::CleaningUp:
        return Phase::CleaningUp;
    case SessionPhase::Leaving:
    case SessionPhase::Ended:
        break;
    }
    return Phase::Confirming;
}

Outcome OutcomeOf(const MeasurementSession& session, bool hasGaps)
{
    switch (session.CurrentOutcome()) {
    case SessionOutcome::Completed:
        return hasGaps ? Outcome::Interrupted : Outcome::Completed;
    case SessionOutcome::Aborted:
        return Outcome::Aborted;
    case SessionOutcome::LinkLost:
        return Outcome::LinkLost;
    case SessionOutcome::None:
    case SessionOutcome::Failed:
        break;
    }
    return Outcome::Failed;
}

Failure FailureOf(const MeasurementSession& session, Vesmar::Error presentError)
{
    if (!session.IsStopConfirmed() && session.FailureReason() != Reason::OtherFunction) {
        return StopNotConfirmed(session, presentError);
    }
    if (session.CurrentOutcome() == SessionOutcome::LinkLost) {
        return LinkLost("The measurement was given up; the instrument has stopped.", presentError);
    }
    return FailureOf(session.FailureReason(), session.FirstError());
}

Failure KeepAliveMissed()
{
    return FailureNamed("keep-alive-missed",
                        "The application did not say in time that it was still there, so the measurement was "
                        "aborted.",
                        "Measure again.");
}

} // namespace VesmarClient
