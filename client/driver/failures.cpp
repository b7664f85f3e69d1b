#include "client/driver/failures.h"

#include "client/line/diagnosis.h"
#include "client/words/translation.h"

namespace VesmarClient
{

Failure FailureNamed(const char* name, const char* whatHappened, const char* nextStep)
{
    return {Error::NoErrors, QString::fromLatin1(name), Translated(whatHappened), {}, Translated(nextStep)};
}

Failure Busy()
{
    return FailureNamed("busy", QT_TRANSLATE_NOOP("VesmarClient", "Another job is under way."),
                        QT_TRANSLATE_NOOP("VesmarClient", "Wait until it has finished, or abort it."));
}

Failure NotConnected(LinkState state)
{
    if (state == LinkState::UpdateMode) {
        return FailureNamed(
            "update-mode",
            QT_TRANSLATE_NOOP("VesmarClient", "The instrument is in update mode (3) and waits for firmware."),
            QT_TRANSLATE_NOOP("VesmarClient", "Send it its firmware, or restart it."));
    }
    return FailureNamed(
        "not-connected", QT_TRANSLATE_NOOP("VesmarClient", "The link to the instrument is not up."),
        QT_TRANSLATE_NOOP("VesmarClient",
                          "Open the line, check cable and power, and wait until the link is up."));
}

Failure LinkLost(const char* notDone, Vesmar::Error error)
{
    Failure failure = FailureNamed(
        "link-lost", notDone, QT_TRANSLATE_NOOP("VesmarClient", "Check cable and power, and try again."));
    const Failure reason = Failure::ofError(static_cast<Error>(ReasonForLoss(error)));
    failure.whatHappened +=
        QLatin1Char(' ') + Translated(QT_TRANSLATE_NOOP("VesmarClient", "The link to it was lost."));
    failure.code = reason.code;
    failure.causes = reason.causes;
    return failure;
}

Failure StopNotConfirmed(Vesmar::Error error)
{
    Failure failure = FailureNamed(
        "stop-not-confirmed",
        QT_TRANSLATE_NOOP("VesmarClient", "It is not confirmed that the instrument has stopped: it may still "
                                          "be running, and high voltage may be on."),
        QT_TRANSLATE_NOOP("VesmarClient", "Cut the mains of the instrument, or switch it off, before anybody "
                                          "touches the appliance."));
    const Failure reason = Failure::ofError(static_cast<Error>(ReasonForLoss(error)));
    failure.code = reason.code;
    failure.causes = reason.causes;
    return failure;
}

} // namespace VesmarClient
