#pragma once

#include "cli/kit/connection.h"
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

/// Carries out a firmware update at the instrument, and shows what happens.
class UpdateRun : public QObject
{
    Q_OBJECT

public:
    UpdateRun(Connection& connection, UpdateView& view, const UpdateFiles& files,
              const UpdateOptions& options);

private:
    void Begin();
    void EnterPhase(VesmarClient::Phase phase);
    void Interrupt(int signalNumber);
    bool MayBeInterrupted() const;
    void End();

    Connection& _connection;
    UpdateView& _view;
    const UpdateFiles& _files;
    const UpdateOptions& _options;
    VesmarClient::UpdateJob* _job = nullptr; ///< Null until it has begun; the instrument's.
    VesmarClient::Phase _phase = VesmarClient::Phase::Waiting;
    int _signalNumber = 0; ///< That has asked for the end; 0 where none has.
};

} // namespace Cli
