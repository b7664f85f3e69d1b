#include "client/driver/updatefailure.h"

#include "client/driver/failures.h"
#include "client/line/diagnosis.h"
#include "client/words/translation.h"

namespace VesmarClient
{

namespace
{

constexpr char SendAgain[] =
    QT_TRANSLATE_NOOP("VesmarClient", "Check cable and power, and send the same firmware again.");

/// What has become of the firmware.
const char* Consequence(const UpdateSession& session)
{
    if (session.FirstError() == Vesmar::Error::UpdateModeChangeFailed) {
        return QT_TRANSLATE_NOOP("VesmarClient", "Nothing was sent, and the instrument keeps its firmware.");
    }
    if (session.EndedIn() == UpdateSession::Phase::ChangingMode) {
        return QT_TRANSLATE_NOOP("VesmarClient", "No sector was sent. The instrument may be in update mode.");
    }
    return QT_TRANSLATE_NOOP("VesmarClient",
                             "Not all of the firmware was confirmed. The instrument stays in update mode.");
}

Failure DriverFailure(const UpdateSession& session)
{
    Failure failure = Failure::ofError(static_cast<Error>(session.FirstError()));
    failure.whatHappened += QLatin1Char(' ') + Translated(Consequence(session));
    failure.nextStep = Translated(SendAgain);
    return failure;
}

/// The same, with the driver's reason for the loss of the link.
Failure WithReason(Failure failure, Vesmar::Error error)
{
    const Failure reason = Failure::ofError(static_cast<Error>(ReasonForLoss(error)));
    failure.code = reason.code;
    failure.causes = reason.causes;
    return failure;
}

} // namespace

Failure ReasonOf(const UpdateSession& session, Vesmar::Error presentError)
{
    switch (session.CurrentOutcome()) {
    case UpdateSession::Outcome::None:
    case UpdateSession::Outcome::Updated:
    case UpdateSession::Outcome::Interrupted:
        break;
    case UpdateSession::Outcome::Failed:
        return DriverFailure(session);
    case UpdateSession::Outcome::ModeNotChanged:
        return FailureNamed(
            "mode-not-changed",
            QT_TRANSLATE_NOOP("VesmarClient",
                              "The instrument did not change to update mode in time. Nothing was sent."),
            SendAgain);
    case UpdateSession::Outcome::StaysInUpdateMode:
        return FailureNamed(
            "update-mode",
            QT_TRANSLATE_NOOP("VesmarClient",
                              "All sectors and the confirmation were accepted, but the instrument stays in "
                              "update mode."),
            QT_TRANSLATE_NOOP("VesmarClient", "Send the same firmware again."));
    case UpdateSession::Outcome::NotBack:
        return WithReason(
            FailureNamed(
                "not-back",
                QT_TRANSLATE_NOOP("VesmarClient",
                                  "The firmware was sent and confirmed, but the instrument has not come "
                                  "back in time."),
                QT_TRANSLATE_NOOP("VesmarClient",
                                  "Check cable and power. Once the link is up, its version tells what "
                                  "became of it.")),
            presentError);
    case UpdateSession::Outcome::LinkLost:
        return WithReason(
            FailureNamed(
                "link-lost",
                QT_TRANSLATE_NOOP("VesmarClient", "The link was lost before the first sector was sent."),
                SendAgain),
            presentError);
    }
    return {};
}

} // namespace VesmarClient
