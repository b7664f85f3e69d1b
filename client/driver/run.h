#pragma once

#include <QObject>

#include <VesmarClient/failure.h>

namespace VesmarClient
{

/// What a job does at the instrument, on the driver's thread, where it may use the tester directly. The host
/// begins it while the link is up, one run at a time, and deletes it once it has finished. It ends by itself,
/// whatever the link does: every wait in it has a limit.
class Run : public QObject
{
    Q_OBJECT

public:
    /// Begins the work. Called once.
    virtual void Begin() = 0;
    /// Ends the work as soon as that is safe. May be called at any time after `Begin`, and more than once.
    virtual void Abort() = 0;

Q_SIGNALS:
    void PhaseChanged(VesmarClient::Phase phase);
    /// Emitted once, as the last signal.
    void Finished(VesmarClient::Outcome outcome, const VesmarClient::Failure& failure);
};

} // namespace VesmarClient
