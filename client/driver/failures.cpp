#include "client/driver/failures.h"

#include <QCoreApplication>

#include "client/line/diagnosis.h"

namespace VesmarClient
{

namespace
{

QString Translated(const char* text)
{
    return QCoreApplication::translate("VesmarClient", text);
}

} // namespace

Failure FailureNamed(const char* name, const char* whatHappened, const char* nextStep)
{
    return {Error::NoErrors, QString::fromLatin1(name), Translated(whatHappened), {}, Translated(nextStep)};
}

Failure Busy()
{
    return FailureNamed("busy", "Another job is under way.", "Wait until it has finished, or abort it.");
}

Failure NotConnected(LinkState state)
{
    if (state == LinkState::UpdateMode) {
        return FailureNamed("update-mode", "The instrument is in update mode (3) and waits for firmware.",
                            "Send it its firmware, or restart it.");
    }
    return FailureNamed("not-connected", "The link to the instrument is not up.",
                        "Open the line, check cable and power, and wait until the link is up.");
}

Failure LinkLost(const char* notDone, Vesmar::Error error)
{
    Failure failure = FailureNamed("link-lost", notDone, "Check cable and power, and try again.");
    const Failure reason = Failure::ofError(static_cast<Error>(ReasonForLoss(error)));
    failure.whatHappened += QLatin1Char(' ') + Translated("The link to it was lost.");
    failure.code = reason.code;
    failure.causes = reason.causes;
    return failure;
}

} // namespace VesmarClient
