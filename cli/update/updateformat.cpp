#include "cli/update/updateformat.h"

#include <array>

#include "cli/output/wrapped.h"
#include "cli/words/exitstatus.h"
#include "cli/words/text.h"
#include "cli/words/values.h"

namespace Cli
{

namespace
{

using VesmarClient::Error;
using VesmarClient::Phase;

constexpr int AllOfIt = 100;

/// The number is rounded up. It is negative where nothing is known yet.
qint64 SecondsLeft(const UpdateProgress& progress)
{
    constexpr qint64 Second = 1000;
    return progress.left < 0 ? -1 : (progress.left + Second - 1) / Second;
}

QString Percent(const UpdateProgress& progress)
{
    constexpr int Width = 3;
    return QString::number(progress.Percent()).rightJustified(Width) + QStringLiteral(" %");
}

QString Rest(const UpdateProgress& progress)
{
    const QString sectors = QStringLiteral("  ") +
                            Text::tr("%1 of %2 sectors")
                                .arg(QString::number(progress.confirmed), QString::number(progress.sectors));
    const qint64 left = SecondsLeft(progress);
    return left < 0 ? sectors : sectors + QStringLiteral(", ") + Text::tr("%1 s left").arg(left);
}

/// How an update ends that has been told with this failure.
struct KnownEnding {
    const char* failure;
    Ending::Outcome outcome;
    int status;
    const char* message;
};

constexpr std::array<KnownEnding, 5> Endings{{
    {"", Ending::Outcome::Done, ExitStatus::Done,
     QT_TRANSLATE_NOOP("Cli::Text", "Firmware update done. The instrument is back in its normal mode.")},
    {"mode-not-changed", Ending::Outcome::Failed, ExitStatus::Failed,
     QT_TRANSLATE_NOOP("Cli::Text",
                       "Firmware update failed: the instrument did not change to update mode in time. "
                       "Nothing was sent; run the same command again.")},
    {"update-mode", Ending::Outcome::UpdateMode, ExitStatus::Failed,
     QT_TRANSLATE_NOOP("Cli::Text",
                       "Firmware update failed: all sectors and the confirmation were accepted, but the "
                       "instrument stays in update mode; run the same command again.")},
    {"not-back", Ending::Outcome::LinkLost, ExitStatus::LinkLost,
     QT_TRANSLATE_NOOP("Cli::Text",
                       "The firmware was sent and confirmed, but the instrument has not come back in time. "
                       "Check cable and power; vesmar info tells what became of it.")},
    {"link-lost", Ending::Outcome::LinkLost, ExitStatus::LinkLost,
     QT_TRANSLATE_NOOP("Cli::Text",
                       "Firmware update failed: the link was lost before the first sector was sent. Check "
                       "cable and power, and run the same command again.")},
}};

QString Confirmed(const UpdateEnd& end)
{
    const bool isExact = end.sectors < AllOfIt || end.confirmed == end.sectors;
    QString sentence = Text::tr("At least %1 of %2 sectors were confirmed.");
    if (isExact) {
        sentence = end.confirmed == 1 ? Text::tr("%1 of %2 sectors was confirmed.")
                                      : Text::tr("%1 of %2 sectors were confirmed.");
    }
    return sentence.arg(QString::number(end.confirmed), QString::number(end.sectors));
}

QString FailureMessage(const UpdateEnd& end)
{
    const QString failed = Text::tr("Firmware update failed: %1.").arg(Show(end.failure.code).text);
    const QLatin1Char blank(' ');
    if (end.failure.code == Error::UpdateModeChangeFailed) {
        return failed + blank +
               Text::tr("Nothing was sent, and the instrument keeps its firmware; run the same command "
                        "again.");
    }
    if (end.phase == Phase::ChangingMode) {
        return failed + blank +
               Text::tr("No sector was sent. The instrument may be in update mode; check cable and power, "
                        "and run the same command again.");
    }
    return failed + blank + Confirmed(end) + blank +
           Text::tr("The instrument stays in update mode; run the same command again.");
}

QString InterruptionMessage(const UpdateEnd& end)
{
    const QString message =
        end.phase == Phase::Restarting
            ? Text::tr("Ended by signal %1 after the firmware was sent and confirmed. Whether the instrument "
                       "came back with it was not waited for; vesmar info tells.")
            : Text::tr("Ended by signal %1 before the first sector was sent: the instrument keeps its "
                       "firmware. It may be in update mode; vesmar restart brings it back.");
    return message.arg(end.signalNumber);
}

} // namespace

UpdateProgress ProgressOf(const VesmarClient::UpdateJob& job)
{
    return {job.sectorsConfirmed(), job.sectors(), job.timeLeft()};
}

QString UpdateLiveLine(const UpdateProgress& progress)
{
    return Percent(progress) + QLatin1Char(' ') + Bar(static_cast<double>(progress.Percent()) / AllOfIt) +
           Rest(progress);
}

QByteArray UpdateProgressLine(const UpdateProgress& progress)
{
    return (Percent(progress) + Rest(progress) + QLatin1Char('\n')).toUtf8();
}

QByteArray UpdateProgressJson(const QDateTime& time, const UpdateProgress& progress)
{
    const qint64 left = SecondsLeft(progress);
    return EventLine(time, QStringLiteral("progress"),
                     {{QStringLiteral("percent"), progress.Percent()},
                      {QStringLiteral("sectors"), progress.confirmed},
                      {QStringLiteral("total"), progress.sectors},
                      {QStringLiteral("left"), left >= 0 ? QJsonValue(left) : QJsonValue()}});
}

QString VersionText(const QString& version)
{
    return version.isEmpty() ? Text::tr("unknown") : Printable(version);
}

QString UpdateGoesOnMessage(int signalNumber)
{
    return Text::tr("Signal %1 does not end this: an image that is cut short leaves the instrument without "
                    "firmware. Sending it goes on.")
        .arg(signalNumber);
}

Ending EndingOf(const UpdateEnd& end)
{
    if (end.outcome == VesmarClient::Outcome::Aborted) {
        return {ExitStatus::Signalled + end.signalNumber, Ending::Outcome::Interrupted,
                InterruptionMessage(end), QStringLiteral("signal")};
    }
    const Error error = end.failure.code;
    for (const KnownEnding& known : Endings) {
        if (end.failure.name == QLatin1String(known.failure)) {
            return {known.status, known.outcome, Text::tr(known.message), end.failure.name, error};
        }
    }
    if (error != Error::NoErrors) {
        return {ExitStatus::Failed, Ending::Outcome::Failed, FailureMessage(end), QString(), error};
    }
    return {ExitStatus::LinkLost, Ending::Outcome::LinkLost,
            end.failure.whatHappened + QLatin1Char(' ') + end.failure.nextStep, QStringLiteral("link-lost")};
}

QJsonObject ResultFields(const UpdateEnd& end)
{
    const auto version = [](const QString& text) { return text.isEmpty() ? QJsonValue() : QJsonValue(text); };
    return {{QStringLiteral("sectors"), end.confirmed},
            {QStringLiteral("total"), end.sectors},
            {QStringLiteral("versionBefore"), version(end.versionBefore)},
            {QStringLiteral("versionAfter"), version(end.versionAfter)}};
}

} // namespace Cli
