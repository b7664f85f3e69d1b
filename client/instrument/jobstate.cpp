#include "client/instrument/jobstate.h"

#include <QPointer>

namespace VesmarClient
{

namespace
{

constexpr std::chrono::milliseconds TimeBetweenTicks{1000};

} // namespace

JobState::JobState(Job& job) : _job(job)
{
    _time.start();
    connect(&_tick, &QTimer::timeout, this, [this] { Q_EMIT _job.elapsedChanged(Elapsed()); });
}

JobState::~JobState()
{
    Q_EMIT AbortAsked();
}

void JobState::Connect(const Run& run)
{
    connect(this, &JobState::AbortAsked, &run, &Run::AbortInTime);
    connect(&run, &Run::PhaseChanged, this, &JobState::EnterPhase);
    connect(&run, &Run::Finished, this, &JobState::Finish);
    _tick.start(TimeBetweenTicks);
}

void JobState::FailLater(const Failure& reason)
{
    QMetaObject::invokeMethod(
        this, [this, reason] { Finish(Outcome::Failed, reason); }, Qt::QueuedConnection);
}

void JobState::EnterPhase(Phase entered)
{
    if (entered != phase) {
        phase = entered;
        Q_EMIT _job.phaseChanged(entered);
    }
}

/// The application may delete the job in a slot of the last signal.
void JobState::Finish(Outcome reached, const Failure& reason)
{
    _tick.stop();
    _elapsed = Elapsed();
    outcome = reached;
    failure = reason;
    const QPointer<Job> job(&_job);
    EnterPhase(Phase::Finished);
    if (!job.isNull()) {
        Q_EMIT job->finished(reached);
    }
}

} // namespace VesmarClient
