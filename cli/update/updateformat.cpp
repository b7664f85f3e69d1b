#include "cli/update/updateformat.h"

#include <array>

#include "cli/words/exitstatus.h"
#include "cli/words/format.h"
#include "client/line/diagnosis.h"
#include "client/words/named.h"

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

/// How an update ends with this outcome.
struct KnownEnding {
    Outcome value;
    Ending::Outcome outcome;
    int status;
    const char* reason;
    const char* message; ///< Empty where it depends on the course of the update.
};

constexpr std::array<KnownEnding, 7> Endings{{
    {Outcome::Updated, Ending::Outcome::Done, ExitStatus::Done, "",
     "Firmware update done. The instrument is back in its normal mode."},
    {Outcome::Failed, Ending::Outcome::Failed, ExitStatus::Failed, "", ""},
    {Outcome::ModeNotChanged, Ending::Outcome::Failed, ExitStatus::Failed, "mode-not-changed",
     "Firmware update failed: the instrument did not change to update mode in time. Nothing was sent; run "
     "the same command again."},
    {Outcome::StaysInUpdateMode, Ending::Outcome::UpdateMode, ExitStatus::Failed, "update-mode",
     "Firmware update failed: all sectors and the confirmation were accepted, but the instrument stays in "
     "update mode; run the same command again."},
    {Outcome::NotBack, Ending::Outcome::LinkLost, ExitStatus::LinkLost, "not-back",
     "The firmware was sent and confirmed, but the instrument has not come back in time. Check cable and "
     "power; vesmar info tells what became of it."},
    {Outcome::LinkLost, Ending::Outcome::LinkLost, ExitStatus::LinkLost, "link-lost",
     "Firmware update failed: the link was lost before the first sector was sent. Check cable and power, "
     "and run the same command again."},
    {Outcome::Interrupted, Ending::Outcome::Interrupted, ExitStatus::Signalled, "signal", ""},
}};

/// The ending of an update that goes on when the program ends it.
constexpr KnownEnding NoEnding{Outcome::None, Ending::Outcome::Failed, ExitStatus::NotDone, "", ""};

const KnownEnding& FindEnding(const UpdateSession& session)
{
    const KnownEnding* const ending = VesmarClient::FindRow(Endings, session.CurrentOutcome());
    return ending != nullptr ? *ending : NoEnding;
}

/// The error that is the reason; none where no error is.
Error EndingError(const UpdateSession& session, Error presentError)
{
    const bool isLinkLost = FindEnding(session).outcome == Ending::Outcome::LinkLost;
    return isLinkLost ? VesmarClient::ReasonForLoss(presentError) : session.FirstError();
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
    case Outcome::Failed:
        return FailureMessage(session);
    case Outcome::Interrupted:
        return InterruptionMessage(session);
    default:
        return QString::fromLatin1(FindEnding(session).message);
    }
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
    const bool isInterrupted = session.CurrentOutcome() == Outcome::Interrupted;
    return FindEnding(session).status + (isInterrupted ? session.SignalNumber() : 0);
}

Ending EndingOf(const UpdateSession& session, Error presentError)
{
    const KnownEnding& ending = FindEnding(session);
    return {ExitStatusOf(session), ending.outcome, EndMessage(session), QString::fromLatin1(ending.reason),
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
