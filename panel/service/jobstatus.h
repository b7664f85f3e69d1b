#pragma once

#include <QLabel>
#include <QPointer>
#include <QWidget>

#include <VesmarClient/job.h>

#include "panel/kit/failurecard.h"

namespace Panel
{

/// What a job is doing, and what has become of it.
class JobStatus : public QWidget
{
    Q_OBJECT

public:
    JobStatus();

    /// Shows this job from now on; `done` is said when it is completed.
    void watch(VesmarClient::Job* job, const QString& done);

Q_SIGNALS:
    void failed(const VesmarClient::Failure& failure);

private:
    void showPhase();
    void showEnd(const QString& done);

    QLabel* _text;
    FailureCard _failure;
    QPointer<VesmarClient::Job> _job;
};

} // namespace Panel
