#include "cli/measure/measurementend.h"

#include <QJsonArray>

#include "cli/measure/measurementformat.h"
#include "cli/words/exitstatus.h"
#include "cli/words/text.h"
#include "cli/words/values.h"

namespace Cli
{

namespace
{

using VesmarClient::Error;
using VesmarClient::Failure;
using VesmarClient::Gap;
using VesmarClient::Outcome;

int StatusOf(const MeasurementEnd& end)
{
    if (end.outcome == Outcome::LinkLost) {
        return ExitStatus::LinkLost;
    }
    if (!end.isStopConfirmed) {
        return ExitStatus::StopNotConfirmed;
    }
    switch (end.outcome) {
    case Outcome::Completed:
        return ExitStatus::Done;
    case Outcome::Interrupted:
        return ExitStatus::Interrupted;
    case Outcome::Aborted:
        return ExitStatus::Aborted;
    default:
        return ExitStatus::Failed;
    }
}

Ending::Outcome OutcomeOf(const MeasurementEnd& end)
{
    switch (end.outcome) {
    case Outcome::Completed:
        return end.isStopConfirmed ? Ending::Outcome::Done : Ending::Outcome::Failed;
    case Outcome::Interrupted:
        return end.isStopConfirmed ? Ending::Outcome::Interrupted : Ending::Outcome::Failed;
    case Outcome::Aborted:
        return Ending::Outcome::Aborted;
    case Outcome::LinkLost:
        return Ending::Outcome::LinkLost;
    default:
        return Ending::Outcome::Failed;
    }
}

/// The most urgent one; empty where an error tells it.
QString ReasonOf(const MeasurementEnd& end)
{
    if (end.outcome == Outcome::LinkLost) {
        return QStringLiteral("link-lost");
    }
    if (end.outcome == Outcome::Interrupted && end.isStopConfirmed) {
        return QStringLiteral("gap");
    }
    const bool isError = end.failure.name == Failure::ofError(end.failure.code).name;
    return isError ? QString() : end.failure.name;
}

QString LossMessage(const MeasurementEnd& end)
{
    if (!end.isStopConfirmed) {
        return Text::tr("Link lost, the state of the instrument is unknown: it may still be running, and "
                        "high voltage may be on. Switch it off at the instrument.");
    }
    const QString lost =
        end.lastPhase == VesmarClient::Phase::Preparing
            ? Text::tr("Link lost, or the measurement refused by the instrument, while preparing.")
            : Text::tr("Link lost in the middle of the measurement.");
    return lost + QLatin1Char(' ') + Text::tr("It is back, and the instrument is confirmed to have stopped.");
}

/// Where the stop is not confirmed, the failure is nothing but that, and says so behind this sentence.
QString FailedSentence(const QString& function, const MeasurementEnd& end)
{
    const QString failed = Text::tr("Measurement %1 failed: %2");
    if (end.failure.code != Error::NoErrors) {
        return failed.arg(function, Show(end.failure.code).text) + QLatin1Char('.');
    }
    if (end.failure.name == QLatin1String("stop-not-confirmed")) {
        return Text::tr("Measurement %1 failed.").arg(function);
    }
    return failed.arg(function, end.failure.whatHappened + QLatin1Char(' ') + end.failure.nextStep);
}

QString InterruptedSentence(const QString& function, const QVector<Gap>& gaps)
{
    qint64 duration = 0;
    for (const Gap& gap : gaps) {
        duration += gap.duration;
    }
    return Text::tr("Measurement %1 done, but for %2 s there was no reading.")
        .arg(function, QString::number(static_cast<double>(duration) / 1000, 'f', 1));
}

QString FirstSentence(const QString& function, const MeasurementEnd& end)
{
    switch (end.outcome) {
    case Outcome::Completed:
        return Text::tr("Measurement %1 done.").arg(function);
    case Outcome::Interrupted:
        return InterruptedSentence(function, end.gaps);
    case Outcome::Aborted:
        return Text::tr("Measurement %1 aborted.").arg(function);
    default:
        return FailedSentence(function, end);
    }
}

QString MessageOf(const QString& function, const MeasurementEnd& end)
{
    if (end.outcome == Outcome::LinkLost) {
        return LossMessage(end);
    }
    const QString stop =
        end.isStopConfirmed
            ? Text::tr("The instrument is confirmed to have stopped.")
            : Text::tr("STOP NOT CONFIRMED: the instrument may still be running, and high voltage may be "
                       "on. Switch it off at the instrument.");
    return FirstSentence(function, end) + QLatin1Char(' ') + stop;
}

} // namespace

Ending EndingOf(const QString& function, const MeasurementEnd& end)
{
    return {StatusOf(end), OutcomeOf(end), MessageOf(function, end), ReasonOf(end), end.failure.code};
}

QJsonObject ResultFields(const QString& function, const MeasurementEnd& end,
                         const QVector<VesmarClient::Reading>& readings)
{
    QJsonArray gaps;
    for (const Gap& gap : end.gaps) {
        gaps.append(GapFields(gap));
    }
    return {
        {QStringLiteral("function"), function},
        {QStringLiteral("stopped"), end.isStopConfirmed},
        {QStringLiteral("readings"), readings.isEmpty() ? QJsonValue() : QJsonValue(ReadingsJson(readings))},
        {QStringLiteral("gaps"), gaps}};
}

} // namespace Cli
