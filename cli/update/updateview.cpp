#include "cli/update/updateview.h"

#include "cli/words/advice.h"
#include "cli/words/exitstatus.h"
#include "cli/words/format.h"

namespace Cli
{

using VesmarClient::UpdateSession;
using Phase = UpdateSession::Phase;

UpdateView::UpdateView(bool isJson) : _isJson(isJson), _screen(!isJson) {}

void UpdateView::ShowVersionBefore(const QString& version)
{
    _versions.before = version;
    if (!_isJson) {
        _screen.Write(InfoLine(QStringLiteral("Version before"), VersionText(version)));
    }
}

/// A phase begins before its progress, and ends after it.
void UpdateView::Show(const UpdateSession& session)
{
    if (session.CurrentPhase() == Phase::Sending) {
        ShowPhase(Phase::Sending);
    }
    if (_time.isValid() && session.Progress() != _percent) {
        _percent = session.Progress();
        ShowProgress({_percent, session.ConfirmedSectors(), session.Sectors(),
                      std::chrono::milliseconds(_time.elapsed())});
    }
    ShowPhase(session.CurrentPhase());
}

void UpdateView::ShowPhase(Phase phase)
{
    if (phase == _phase) {
        return;
    }
    _phase = phase;
    switch (phase) {
    case Phase::ChangingMode:
        ShowLine(QStringLiteral("Changing the instrument to update mode."));
        break;
    case Phase::Sending:
        _time.start();
        ShowLine(QStringLiteral("Sending the firmware. Do not switch the instrument off."));
        break;
    case Phase::Restarting:
        ShowLine(QStringLiteral("The firmware is confirmed. Waiting for the instrument to come back."));
        break;
    default:
        break;
    }
}

void UpdateView::ShowProgress(const UpdateProgress& progress)
{
    constexpr int PercentPerLine = 10;
    if (_isJson) {
        _screen.Write(UpdateProgressJson(QDateTime::currentDateTime(), progress));
    } else if (_screen.HasLiveLine()) {
        _screen.Draw(UpdateLiveLine(progress, LiveScreen::Width()));
    } else if (progress.percent / PercentPerLine != _percentInALine / PercentPerLine) {
        _percentInALine = progress.percent;
        _screen.Write(UpdateProgressLine(progress));
    }
}

void UpdateView::ShowStatus(Vesmar::OperationState status)
{
    ShowEvent("status", Cli::Show(status).json);
}

void UpdateView::ShowError(Vesmar::Error error)
{
    ShowEvent("error", Cli::Show(error).json);
}

void UpdateView::ShowEvent(const char* event, const QJsonValue& value)
{
    if (_isJson) {
        _screen.Write(EventLine(QDateTime::currentDateTime(), QString::fromLatin1(event),
                                {{QStringLiteral("value"), value}}));
    }
}

void UpdateView::ShowLine(const QString& text)
{
    if (!_isJson) {
        _screen.Write(text.toUtf8() + '\n');
    }
}

void UpdateView::ShowEnd(const UpdateSession& session, const QString& versionAfter,
                         Vesmar::Error presentError)
{
    _versions.after = versionAfter;
    const Ending ending = EndingOf(session, presentError);
    if (_isJson) {
        _screen.Write(ResultLine(QDateTime::currentDateTime(), ending, ResultFields(session, _versions)));
    }
    if (ending.status != ExitStatus::Done) {
        Say(_isJson ? ending.message : WithAdvice(ending.message, ending.error));
    } else if (!_isJson) {
        _screen.Write(InfoLine(QStringLiteral("Version after"), VersionText(versionAfter)));
        _screen.Write(ending.message.toUtf8() + '\n');
    }
}

} // namespace Cli
