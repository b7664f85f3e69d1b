#pragma once

#include <QElapsedTimer>

#include "cli/output/livescreen.h"
#include "cli/update/updateformat.h"

namespace Cli
{

/// Shows a firmware update while it goes on, and its end.
class UpdateView
{
public:
    explicit UpdateView(bool isJson);

    void ShowVersionBefore(const QString& version);
    /// Shows what has changed in the session since the last call.
    void Show(const VesmarClient::UpdateSession& session);
    /// Shows an event, for programs only.
    void ShowStatus(Vesmar::OperationState status);
    void ShowError(Vesmar::Error error);
    /// Writes a sentence for the person who watches to the error output.
    void Say(const QString& text) { _screen.Say(text); }
    /// Shows the end, with the library's present error.
    void ShowEnd(const VesmarClient::UpdateSession& session, const QString& versionAfter,
                 Vesmar::Error presentError);

    /// Writes what is left. False if not everything could be shown.
    bool Finish() { return _screen.Finish(); }

private:
    void ShowPhase(VesmarClient::UpdateSession::Phase phase);
    void ShowProgress(const UpdateProgress& progress);
    void ShowEvent(const char* event, const QJsonValue& value);
    void ShowLine(const QString& text);

    bool _isJson;
    LiveScreen _screen;
    UpdateVersions _versions;
    VesmarClient::UpdateSession::Phase _phase = VesmarClient::UpdateSession::Phase::Connecting;
    QElapsedTimer _time; ///< Runs since the sending began.
    int _percent = -1;   ///< The percentage that was shown last.
    int _percentInALine = 0;
};

} // namespace Cli
