#include "client/measuring/measurementend.h"

#include <array>

#include <QCoreApplication>

#include "client/catalogue/conversions.h"
#include "client/driver/failures.h"
#include "client/line/diagnosis.h"
#include "client/words/named.h"

namespace VesmarClient
{

namespace
{

using SessionOutcome = MeasurementSession::Outcome;
using SessionPhase = MeasurementSession::Phase;
using Reason = MeasurementSession::Reason;

/// A reason that is no error, in the words of a failure.
struct ReasonWords {
    Reason value;
    const char* name;
    const char* whatHappened;
    const char* nextStep;
};

constexpr std::array<ReasonWords, 5> AllReasonWords{{
    {Reason::NotPrepared, "not-prepared",
     QT_TRANSLATE_NOOP("VesmarClient", "The instrument did not prepare the measurement in time."),
     QT_TRANSLATE_NOOP("VesmarClient", "Check how the appliance is connected, and measure again.")},
    {Reason::NotStarted, "not-started",
     QT_TRANSLATE_NOOP("VesmarClient", "The instrument did not start the measurement in time."),
     QT_TRANSLATE_NOOP("VesmarClient",
                       "Check the mains supply and how the appliance is connected, and measure again.")},
    {Reason::NoResult, "no-result",
     QT_TRANSLATE_NOOP("VesmarClient",
                       "The measurement ended early or without a reading, and no error was seen."),
     QT_TRANSLATE_NOOP("VesmarClient", "Measure again.")},
    {Reason::FunctionLost, "function-lost",
     QT_TRANSLATE_NOOP("VesmarClient", "The instrument gave the measurement up in the middle, for another "
                                       "function or for a restart."),
     QT_TRANSLATE_NOOP("VesmarClient", "Measure again.")},
    {Reason::OtherFunction, "other-function",
     QT_TRANSLATE_NOOP("VesmarClient",
                       "The instrument is busy with a function that was not started here, and "
                       "does not stop it."),
     QT_TRANSLATE_NOOP("VesmarClient", "Switch the instrument off, and on again.")},
}};

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
    const bool isLinkLost = session.CurrentOutcome() == SessionOutcome::LinkLost;
    if (!session.IsStopConfirmed() && session.FailureReason() != Reason::OtherFunction) {
        Failure failure = StopNotConfirmed(isLinkLost ? presentError : Vesmar::Error::NoErrors);
        if (session.FailureReason() == Reason::Error) {
            failure.code = ErrorOf(session.FirstError());
        }
        return failure;
    }
    if (isLinkLost) {
        return LinkLost(QT_TRANSLATE_NOOP("VesmarClient",
                                          "The measurement was given up, and the instrument has stopped."),
                        presentError);
    }
    if (session.FailureReason() == Reason::Error) {
        return Failure::ofError(ErrorOf(session.FirstError()));
    }
    const auto* const words = FindRow(AllReasonWords, session.FailureReason());
    return words != nullptr ? FailureNamed(words->name, words->whatHappened, words->nextStep) : Failure();
}

Failure KeepAliveMissed()
{
    return FailureNamed("keep-alive-missed",
                        QT_TRANSLATE_NOOP("VesmarClient", "The application did not say in time that it was "
                                                          "still there, so the measurement was aborted."),
                        QT_TRANSLATE_NOOP("VesmarClient", "Measure again."));
}

} // namespace VesmarClient
