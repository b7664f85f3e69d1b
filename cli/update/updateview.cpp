#include "cli/update/updateview.h"

#include "cli/words/advice.h"
#include "cli/words/exitstatus.h"
#include "cli/words/text.h"
#include "cli/words/values.h"

namespace Cli
{

using Vesmar::OperationState;
using VesmarClient::Phase;

UpdateView::UpdateView(bool isJson) : _isJson(isJson), _screen(!isJson) {}

void UpdateView::ShowVersionBefore(const QString& version)
{
    ShowLine(InfoLine(Text::tr("Version before"), VersionText(version)));
}

void UpdateView::ShowPhase(Phase phase)
{
    if (phase == _phase) {
        return;
    }
    _phase = phase;
    switch (phase) {
    case Phase::ChangingMode:
        ShowLine(Text::tr("Changing the instrument to update mode.").toUtf8() + '\n');
        break;
    case Phase::Initializing:
        ShowStatus(OperationState::Started);
        break;
    case Phase::Sending:
        ShowStatus(OperationState::InProgress);
        ShowLine(Text::tr("Sending the firmware. Do not switch the instrument off.").toUtf8() + '\n');
        break;
    case Phase::Restarting:
        ShowStatus(OperationState::Finished);
        ShowLine(Text::tr("The firmware is confirmed. Waiting for the instrument to come back.").toUtf8() +
                 '\n');
        break;
    case Phase::Finished:
        ShowStatus(OperationState::Idle);
        break;
    default:
        break;
    }
}

void UpdateView::ShowProgress(const UpdateProgress& progress)
{
    constexpr int PercentPerLine = 10;
    ShowPhase(Phase::Sending);
    const int percent = progress.Percent();
    if (percent == _percent) {
        return;
    }
    _percent = percent;
    if (_isJson) {
        _screen.Write(UpdateProgressJson(QDateTime::currentDateTime(), progress));
    } else if (_screen.HasLiveLine()) {
        _screen.Draw(UpdateLiveLine(progress));
    } else if (percent / PercentPerLine != _percentInALine / PercentPerLine) {
        _percentInALine = percent;
        _screen.Write(UpdateProgressLine(progress));
    }
}

void UpdateView::ShowStatus(OperationState state)
{
    ShowEvent("status", Cli::Show(state).json);
}

void UpdateView::ShowError(VesmarClient::Error error)
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

void UpdateView::ShowLine(const QByteArray& line)
{
    if (!_isJson) {
        _screen.Write(line);
    }
}

void UpdateView::ShowEnd(const UpdateEnd& end)
{
    const Ending ending = EndingOf(end);
    if (_isJson) {
        _screen.Write(ResultLine(QDateTime::currentDateTime(), ending, ResultFields(end)));
    }
    if (ending.status != ExitStatus::Done) {
        Say(_isJson ? ending.message : WithAdvice(ending.message, ending.error));
        return;
    }
    ShowLine(InfoLine(Text::tr("Version after"), VersionText(end.versionAfter)));
    ShowLine(ending.message.toUtf8() + '\n');
}

} // namespace Cli
