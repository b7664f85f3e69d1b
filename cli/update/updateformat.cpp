#include "cli/update/updateformat.h"

#include "cli/words/exitstatus.h"
#include "cli/words/format.h"
#include "client/line/diagnosis.h"

namespace Cli
{

namespace
{

using VesmarClient::UpdateSession;
using Outcome = UpdateSession::Outcome;
using Phase = UpdateSession::Phase;
using Vesmar::Error;

constexpr int AllOfIt = 100;

/// The number is rounded up. It is negative where nothing is known yet.
qint64 SecondsLeft(const UpdateProgress& progress)
{
    constexpr qint64 Second = 1000;
    if (progress.percent == 0) {
        return -1;
    }
    const qint64 left = progress.elapsed.count() * (AllOfIt - progress.percent) / progress.percent;
    return (left + Second - 1) / Second;
}

QString Percent(const UpdateProgress& progress)
{
    constexpr int Width = 3;
    return QString::number(progress.percent).rightJustified(Width) + QStringLiteral(" %");
}

QString Rest(const UpdateProgress& progress)
{
    QString text = QStringLiteral("  %1 of %2 sectors").arg(progress.confirmed).arg(progress.sectors);
    if (const qint64 left = SecondsLeft(progress); left >= 0) {
        text += QStringLiteral(", %1 s left").arg(left);
    }
    return text;
}

Ending::Outcome EndingOutcome(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Updated:
        return Ending::Outcome::Done;
    case Outcome::StaysInUpdateMode:
        return Ending::Outcome::UpdateMode;
    case Outcome::NotBack:
    case Outcome::LinkLost:
        return Ending::Outcome::LinkLost;
    case Outcome::Interrupted:
        return Ending::Outcome::Interrupted;
    default:
        return Ending::Outcome::Failed;
    }
}

/// The error that is the reason; none where no error is.
Error EndingError(const UpdateSession& session, Error presentError)
{
    const bool isLinkLost = EndingOutcome(session.CurrentOutcome()) == Ending::Outcome::LinkLost;
    return isLinkLost ? VesmarClient::ReasonForLoss(presentError) : session.FirstError();
}

QString EndingReason(Outcome outcome)
{
    switch (outcome) {
    case Outcome::ModeNotChanged:
        return QStringLiteral("mode-not-changed");
    case Outcome::StaysInUpdateMode:
        return QStringLiteral("update-mode");
    case Outcome::NotBack:
        return QStringLiteral("not-back");
    case Outcome::LinkLost:
        return QStringLiteral("link-lost");
    case Outcome::Interrupted:
        return QStringLiteral("signal");
    default:
        return {};
    }
}

QString Confirmed(const UpdateSession& session)
{
    const bool isExact = session.Sectors() < AllOfIt || session.Progress() == AllOfIt;
    const int confirmed = session.ConfirmedSectors();
    return QStringLiteral(" %1%2 of %3 sectors %4 confirmed.")
        .arg(isExact ? QString() : QStringLiteral("At least "))
        .arg(confirmed)
        .arg(session.Sectors())
        .arg(confirmed == 1 ? QStringLiteral("was") : QStringLiteral("were"));
}

QString FailureMessage(const UpdateSession& session)
{
    const QString failed = QStringLiteral("Firmware update failed: %1.").arg(Show(session.FirstError()).text);
    if (session.FirstError() == Error::UpdateModeChangeFailed) {
        return failed +
               QStringLiteral(" Nothing was sent, and the instrument keeps its firmware; run the same "
                              "command again.");
    }
    if (session.EndedIn() == Phase::ChangingMode) {
        return failed +
               QStringLiteral(" No sector was sent. The instrument may be in update mode; check cable and "
                              "power, and run the same command again.");
    }
    return failed + Confirmed(session) +
           QStringLiteral(" The instrument stays in update mode; run the same command again.");
}

QString InterruptionMessage(const UpdateSession& session)
{
    const QString ended = QStringLiteral("Ended by signal %1").arg(session.SignalNumber());
    if (session.EndedIn() == Phase::Restarting) {
        return ended +
               QStringLiteral(" after the firmware was sent and confirmed. Whether the instrument came back "
                              "with it was not waited for; vesmar info tells.");
    }
    return ended +
           QStringLiteral(" before the first sector was sent: the instrument keeps its firmware. It may be "
                          "in update mode; vesmar restart brings it back.");
}

QString EndMessage(const UpdateSession& session)
{
    switch (session.CurrentOutcome()) {
    case Outcome::Updated:
        return QStringLiteral("Firmware update done. The instrument is back in its normal mode.");
    case Outcome::Failed:
        return FailureMessage(session);
    case Outcome::ModeNotChanged:
        return QStringLiteral(
            "Firmware update failed: the instrument did not change to update mode in time. Nothing "
            "was sent; run the same command again.");
    case Outcome::StaysInUpdateMode:
        return QStringLiteral(
            "Firmware update failed: all sectors and the confirmation were accepted, but the "
            "instrument stays in update mode; run the same command again.");
    case Outcome::NotBack:
        return QStringLiteral(
            "The firmware was sent and confirmed, but the instrument has not come back in time. "
            "Check cable and power; vesmar info tells what became of it.");
    case Outcome::LinkLost:
        return QStringLiteral(
            "Firmware update failed: the link was lost before the first sector was sent. Check "
            "cable and power, and run the same command again.");
    case Outcome::Interrupted:
        return InterruptionMessage(session);
    case Outcome::None:
        break;
    }
    return {};
}

} // namespace

QString UpdateLiveLine(const UpdateProgress& progress, int width)
{
    constexpr int WidthOfBar = 20;
    const QString filled(WidthOfBar * progress.percent / AllOfIt, QLatin1Char('='));
    const QString bar = QStringLiteral(" [%1]").arg(filled.leftJustified(WidthOfBar));
    return (Percent(progress) + bar + Rest(progress)).left(width);
}

QByteArray UpdateProgressLine(const UpdateProgress& progress)
{
    return (Percent(progress) + Rest(progress) + QLatin1Char('\n')).toUtf8();
}

QByteArray UpdateProgressJson(const QDateTime& time, const UpdateProgress& progress)
{
    const qint64 left = SecondsLeft(progress);
    return EventLine(time, QStringLiteral("progress"),
                     {{QStringLiteral("percent"), progress.percent},
                      {QStringLiteral("sectors"), progress.confirmed},
                      {QStringLiteral("total"), progress.sectors},
                      {QStringLiteral("left"), left >= 0 ? QJsonValue(left) : QJsonValue()}});
}

QString VersionText(const QString& version)
{
    return version.isEmpty() ? QStringLiteral("unknown") : Printable(version);
}

QString UpdateGoesOnMessage(int signalNumber)
{
    return QStringLiteral(
               "Signal %1 does not end this: an image that is cut short leaves the instrument without "
               "firmware. Sending it goes on.")
        .arg(signalNumber);
}

int ExitStatusOf(const UpdateSession& session)
{
    switch (session.CurrentOutcome()) {
    case Outcome::Updated:
        return ExitStatus::Done;
    case Outcome::Failed:
    case Outcome::ModeNotChanged:
    case Outcome::StaysInUpdateMode:
        return ExitStatus::Failed;
    case Outcome::NotBack:
    case Outcome::LinkLost:
        return ExitStatus::LinkLost;
    case Outcome::Interrupted:
        return ExitStatus::Signalled + session.SignalNumber();
    case Outcome::None:
        break;
    }
    return ExitStatus::NotDone;
}

Ending EndingOf(const UpdateSession& session, Error presentError)
{
    const Outcome outcome = session.CurrentOutcome();
    return {ExitStatusOf(session), EndingOutcome(outcome), EndMessage(session), EndingReason(outcome),
            EndingError(session, presentError)};
}

QJsonObject ResultFields(const UpdateSession& session, const UpdateVersions& versions)
{
    const auto version = [](const QString& text) { return text.isEmpty() ? QJsonValue() : QJsonValue(text); };
    return {{QStringLiteral("sectors"), session.ConfirmedSectors()},
            {QStringLiteral("total"), session.Sectors()},
            {QStringLiteral("versionBefore"), version(versions.before)},
            {QStringLiteral("versionAfter"), version(versions.after)}};
}

} // namespace Cli
