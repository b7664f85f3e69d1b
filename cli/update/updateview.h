#pragma once

#include "cli/output/livescreen.h"
#include "cli/update/updateformat.h"
#include "cli/words/format.h"

namespace Cli
{

/// Shows a firmware update while it goes on, and its end.
class UpdateView
{
public:
    explicit UpdateView(bool isJson);

    LiveScreen& Screen() { return _screen; }

    void ShowVersionBefore(const QString& version);
    void ShowPhase(VesmarClient::Phase phase);
    /// Shows the progress, of which a part may have been shown before.
    void ShowProgress(const UpdateProgress& progress);
    /// Shows an event, for programs only.
    void ShowError(VesmarClient::Error error);
    /// Writes a sentence for the person who watches to the error output.
    void Say(const QString& text) { _screen.Say(text); }
    void ShowEnd(const UpdateEnd& end);

    /// Writes what is left. False if not everything could be shown.
    int Finish(int exitStatus) { return _screen.Finish(exitStatus); }

private:
    void ShowStatus(Vesmar::OperationState state);
    void ShowEvent(const char* event, const QJsonValue& value);
    void ShowLine(const QByteArray& line);

    bool _isJson;
    LiveScreen _screen;
    VesmarClient::Phase _phase = VesmarClient::Phase::Waiting;
    int _percent = -1; ///< The percentage that was shown last.
    int _percentInALine = 0;
};

} // namespace Cli
