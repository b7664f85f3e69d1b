#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <VesmarClient/job.h>

#include "client/driver/run.h"

namespace VesmarClient
{

/// What a job knows, and its tie to the run that does its work on the driver's thread. It is on the
/// application's thread; a job that is deleted under way aborts its run.
struct JobState : public QObject {
    Q_OBJECT

public:
    explicit JobState(Job& job);
    ~JobState() override;

    static JobState& Of(const Job& job) { return *job._state; }

    /// To be called before the run is moved to the driver's thread.
    void Connect(const Run& run);
    /// Ends a job that has no run, once the event loop is back.
    void FailLater(const Failure& reason);
    /// In milliseconds.
    qint64 Elapsed() const { return outcome != Outcome::None ? _elapsed : _time.elapsed(); }

    Phase phase = Phase::Waiting;
    Outcome outcome = Outcome::None;
    Failure failure;

Q_SIGNALS:
    void AbortAsked();

private:
    void EnterPhase(Phase entered);
    void Finish(Outcome reached, const Failure& reason);

    Job& _job;
    QElapsedTimer _time;
    QTimer _tick;
    qint64 _elapsed = 0; ///< Valid once the job is over.
};

} // namespace VesmarClient
