#include <VesmarClient/updatejob.h>

#include <QElapsedTimer>

#include "client/driver/failures.h"
#include "client/driver/updaterun.h"
#include "client/instrument/instrumentstate.h"
#include "client/instrument/jobstate.h"

namespace VesmarClient
{

struct UpdateState {
    int sectors;
    int confirmed = 0;
    QElapsedTimer sending; ///< Valid once the first sector is being sent.
    QString versionBefore;
    QString versionAfter;
};

UpdateJob::UpdateJob(int sectors, QObject* parent)
    : Job(parent), _update(new UpdateState{sectors, 0, {}, {}, {}})
{
}

UpdateJob::~UpdateJob() = default;

int UpdateJob::sectors() const
{
    return _update->sectors;
}

int UpdateJob::sectorsConfirmed() const
{
    return _update->confirmed;
}

qint64 UpdateJob::timeLeft() const
{
    if (!_update->sending.isValid() || _update->confirmed == 0) {
        return -1;
    }
    const int left = _update->sectors - _update->confirmed;
    return _update->sending.elapsed() * left / _update->confirmed;
}

QString UpdateJob::versionBefore() const
{
    return _update->versionBefore;
}

QString UpdateJob::versionAfter() const
{
    return _update->versionAfter;
}

namespace
{

Failure ProblemOf(const QByteArray& image, const QByteArray& confirmation)
{
    constexpr int ShortestConfirmation = 2;
    constexpr char CheckFile[] =
        QT_TRANSLATE_NOOP("VesmarClient", "Check that it is the right file, and complete.");
    if (image.isEmpty() || image.size() % UpdateRun::SectorSize != 0) {
        return FailureNamed(
            "invalid-image",
            QT_TRANSLATE_NOOP("VesmarClient",
                              "The image is empty, or its size is not a multiple of 512 bytes."),
            CheckFile);
    }
    if (confirmation.size() < ShortestConfirmation) {
        return FailureNamed("invalid-confirmation",
                            QT_TRANSLATE_NOOP("VesmarClient", "The confirmation has fewer than 2 bytes."),
                            CheckFile);
    }
    return {};
}

} // namespace

UpdateJob* Instrument::update(const QByteArray& image, const QByteArray& confirmation, int timeLimit)
{
    return beginUpdate(image, confirmation, timeLimit, false);
}

UpdateJob* Instrument::updateBlindly(const QByteArray& image, const QByteArray& confirmation, int timeLimit)
{
    return beginUpdate(image, confirmation, timeLimit, true);
}

UpdateJob* Instrument::beginUpdate(const QByteArray& image, const QByteArray& confirmation, int timeLimit,
                                   bool isBlind)
{
    auto* const job = new UpdateJob(image.size() / UpdateRun::SectorSize, this);
    const Failure problem = ProblemOf(image, confirmation);
    if (problem.isFailure()) {
        JobState::Of(*job).FailLater(problem);
        return job;
    }
    auto run = std::make_unique<UpdateRun>(image, confirmation, std::chrono::milliseconds(timeLimit),
                                           isBlind ? UpdateRun::Way::Blind : UpdateRun::Way::Usual);
    UpdateState* const update = job->_update.get();
    update->versionBefore = _state->identity.version;
    connect(run.get(), &UpdateRun::VersionAfter, job, [job, update](const QString& version) {
        update->versionAfter = version;
        Q_EMIT job->versionAfterChanged(version);
    });
    connect(run.get(), &Run::PhaseChanged, job, [update](Phase phase) {
        if (phase == Phase::Sending) {
            update->sending.start();
        }
    });
    connect(run.get(), &UpdateRun::Progressed, job, [job, update](int confirmed) {
        update->confirmed = confirmed;
        Q_EMIT job->progressChanged();
    });
    _state->Begin(*job, std::move(run));
    return job;
}

} // namespace VesmarClient
