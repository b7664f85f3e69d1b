#include "cli/kit/failure.h"

#include <VesmarClient/serialdevice.h>

#include "cli/words/text.h"
#include "cli/words/values.h"

namespace Cli
{

namespace
{

using VesmarClient::Error;
using VesmarClient::Mode;

/// "10 s", "0.5 s".
QString Seconds(std::chrono::milliseconds time)
{
    return QString::number(static_cast<double>(time.count()) / 1000.0) + QStringLiteral(" s");
}

Failure DeviceMissing()
{
    return {QStringLiteral("device-missing"),
            Text::tr("The serial device %1 does not exist. Check that the board's serial line has "
                     "this name, or try it without an instrument: "
                     "vesmar-simulator run -- vesmar info")
                .arg(VesmarClient::SerialDevice::path())};
}

Failure Refused()
{
    return {QStringLiteral("refused"),
            Text::tr("The instrument refuses every request. Switch it off and on again, and check "
                     "that it is of the right kind."),
            Error::RequestRefused};
}

Failure Damaged()
{
    return {QStringLiteral("damaged"),
            Text::tr("The instrument's answers arrive damaged. Check the cable and its shield, and "
                     "that no other program uses the line."),
            Error::InvalidResponse};
}

Failure WrongMode(Mode mode)
{
    return {QStringLiteral("wrong-mode"),
            Text::tr("The instrument answers, but does not leave its mode %1. Switch it off and "
                     "on again.")
                .arg(Show(mode).text)};
}

Failure FellSilent()
{
    return {QStringLiteral("no-answer"),
            Text::tr("The instrument answered, but fell silent. Check cable and power, and start "
                     "again."),
            Error::NoResponse};
}

Failure Incomplete(const QString& waited)
{
    return {QStringLiteral("incomplete"),
            Text::tr("The instrument answers, but its clocks could not be read within %1. Check the "
                     "cable, and give it more time with --timeout.")
                .arg(waited)};
}

Failure NoProperAnswer(const QString& waited)
{
    return {QStringLiteral("no-proper-answer"),
            Text::tr("The instrument gave no proper answer within %1: it refuses, answers damaged "
                     "or falls silent. Check cable and power; --timeout 30 finds out which.")
                .arg(waited)};
}

Failure NoAnswer(const QString& waited, Error error)
{
    return {QStringLiteral("no-answer"),
            Text::tr("The instrument did not answer within %1. Check that it is switched on and the "
                     "cable is plugged in, or try it without an instrument: "
                     "vesmar-simulator run -- vesmar info")
                .arg(waited),
            error == Error::NoResponse ? error : Error::NoErrors};
}

Failure OfAnsweringInstrument(const Situation& situation, const QString& waited)
{
    if (situation.mode != Mode::Normal) {
        return WrongMode(situation.mode);
    }
    return situation.error == Error::NoResponse ? FellSilent() : Incomplete(waited);
}

} // namespace

Failure LinkNotUp(const Situation& situation, std::chrono::milliseconds waited)
{
    if (situation.mode == Mode::Update) {
        return InUpdateMode();
    }
    if (situation.error == Error::RequestRefused) {
        return Refused();
    }
    if (situation.error == Error::InvalidResponse) {
        return Damaged();
    }
    if (situation.hasAnswer) {
        return OfAnsweringInstrument(situation, Seconds(waited));
    }
    return situation.error == Error::CommunicationRecovery ? NoProperAnswer(Seconds(waited))
                                                           : NoAnswer(Seconds(waited), situation.error);
}

Failure FailureOf(const VesmarClient::Failure& failure)
{
    for (const Failure& known : {DeviceMissing(), InUpdateMode()}) {
        if (known.kind == failure.name) {
            return known;
        }
    }
    return {failure.name, failure.whatHappened + QLatin1Char(' ') + failure.nextStep, failure.code};
}

Failure InUpdateMode()
{
    return {QStringLiteral("update-mode"),
            Text::tr("The instrument is in update mode (%1) and waits for firmware; run "
                     "vesmar update IMAGE --confirmation FILE.")
                .arg(static_cast<int>(Mode::Update)),
            Error::NoErrors, Ending::Outcome::UpdateMode};
}

Failure LinkLost(const VesmarClient::Failure& failure)
{
    Failure lost = FailureOf(failure);
    lost.kind = QStringLiteral("link-lost");
    lost.outcome = Ending::Outcome::LinkLost;
    return lost;
}

Failure LinkLost(const QString& notDone)
{
    return {QStringLiteral("link-lost"),
            notDone + QLatin1Char(' ') +
                Text::tr("The link to it was lost; check cable and power, and try again."),
            Error::NoErrors, Ending::Outcome::LinkLost};
}

} // namespace Cli
