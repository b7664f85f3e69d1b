#pragma once

#include <QTimer>

#include "cli/kit/link.h"
#include "cli/kit/verb.h"
#include "cli/update/updatefiles.h"
#include "cli/update/updateview.h"

namespace Cli
{

/// The options of `vesmar update` besides those of the link.
struct UpdateOptions {
    QString image;
    QString confirmation;
    bool isOffline = false;
    std::chrono::milliseconds confirmTimeout = UsualConfirmTimeout;
};

/// Carries out a firmware update at the instrument, lets a session observe it, and shows what happens.
class UpdateRun : public QObject
{
    Q_OBJECT

public:
    UpdateRun(Link& link, UpdateView& view, const UpdateFiles& files, const UpdateOptions& options);

    /// Whether the update has begun: there was a link, or none was needed.
    bool HasBegun() const { return _session.CurrentPhase() != Phase::Connecting; }
    /// Shows the end, once the link has been closed. Returns the program's exit status.
    int Conclude();

private:
    using Phase = VesmarClient::UpdateSession::Phase;

    void WatchInstrument();
    VesmarClient::UpdatePicture Picture() const;
    void ReceiveIdentity();
    void Begin(const QString& version);
    void LeaveMachine();
    void UpdateOffline();
    void ObserveInstrument();
    void EnterPhase();
    void AwaitMode();
    void Interrupt(int signalNumber);

    Link& _link;
    Vesmar::Tester& _tester;
    UpdateView& _view;
    const UpdateFiles& _files;
    UpdateOptions _options;
    VesmarClient::UpdateSession _session;
    Phase _phase = Phase::Connecting;
    QString _versionAfter;
    QTimer _limit;
    QTimer _modeCheck;
};

} // namespace Cli
