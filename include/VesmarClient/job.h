#pragma once

#include <QObject>

#include <memory>

#include <VesmarClient/failure.h>

namespace VesmarClient
{

struct JobState;

/// Work at the instrument that takes a while. `Instrument` makes jobs and owns them. An application that is
/// done with a job may delete it with `deleteLater()`; deleting one that is under way aborts it.
///
/// All signals are emitted on the thread of the `Instrument`, and none before the call that has made the job
/// has returned to the event loop. `finished` is emitted once, as the last one.
class VESMARCLIENT_EXPORT Job : public QObject
{
    Q_OBJECT
    Q_PROPERTY(VesmarClient::Phase phase READ phase NOTIFY phaseChanged)
    Q_PROPERTY(qint64 elapsed READ elapsed NOTIFY elapsedChanged)
    Q_PROPERTY(VesmarClient::Outcome outcome READ outcome NOTIFY finished)
    Q_PROPERTY(VesmarClient::Failure failure READ failure NOTIFY finished)
    Q_PROPERTY(bool isFinished READ isFinished NOTIFY finished)

public:
    ~Job() override;

    /// What the job is doing. Default `Phase::Waiting`.
    Phase phase() const;
    /// How long the job has been under way, in milliseconds; it stands still once the job is over.
    qint64 elapsed() const;
    /// How it has ended; `Outcome::None` while it is under way.
    Outcome outcome() const;
    /// Why it has not been completed; empty where it was, or while it is under way.
    Failure failure() const;
    /// Whether it is over, whatever its outcome.
    bool isFinished() const { return outcome() != Outcome::None; }

public Q_SLOTS:
    /// Ends the job as soon as that is safe. A job that has ended, or must not end now (an update that is
    /// being sent), goes on as it is. Returns at once; `finished` follows.
    void abort();
    /// Deletes the job once the event loop is back. For QML, which has no `deleteLater()`.
    void discard() { deleteLater(); }

Q_SIGNALS:
    void phaseChanged(VesmarClient::Phase phase);
    /// Emitted about once a second.
    void elapsedChanged(qint64 milliseconds);
    /// The job is over.
    void finished(VesmarClient::Outcome outcome);

protected:
    /// For the jobs of `Instrument`.
    explicit Job(QObject* parent);

private:
    friend class Instrument;
    friend struct JobState;

    std::unique_ptr<JobState> _state;
};

} // namespace VesmarClient
