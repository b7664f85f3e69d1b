#pragma once

#include <QObject>

#include <VesmarClient/failure.h>

namespace VesmarClient
{

/// What a job does at the instrument, on the driver's thread, where it may use the tester directly. The host
/// begins it while the link is up, one run at a time, and deletes it once it has finished. It ends by itself,
/// whatever the link does: every wait in it has a limit.
///
/// It is created on the application's thread, and before there is a tester: whatever needs the driver's
/// thread or the tester is created in `Begin`.
class Run : public QObject
{
    Q_OBJECT

public:
    Run();

    /// Whether the work can begin while the link is in this state. Only while it is up, unless a run says
    /// otherwise.
    virtual bool MayBegin(LinkState state) const { return state == LinkState::Up; }

    /// Begins the work. Called once.
    virtual void Begin() = 0;
    /// Ends the work as soon as that is safe. May be called at any time after `Begin`, and more than once.
    virtual void Abort() = 0;

    /// Whether even an end before the beginning is to be proved, so that the work begins all the same and is
    /// aborted at once.
    virtual bool IsEndProved() const { return false; }

    /// Begins the work, or ends it where an abort was asked for before.
    void BeginUnlessAborted();
    /// Aborts the work now, or instead of beginning it.
    void AbortInTime();

Q_SIGNALS:
    void PhaseChanged(VesmarClient::Phase phase);
    /// Emitted once, as the last signal.
    void Finished(VesmarClient::Outcome outcome, const VesmarClient::Failure& failure);

private:
    enum class Stage { Waiting, Aborted, UnderWay, Over };

    Stage _stage = Stage::Waiting;
};

} // namespace VesmarClient
