#include "panel/service/jobstatus.h"

#include "panel/kit/widgets.h"
#include "panel/kit/words.h"

namespace Panel
{

using VesmarClient::Job;
using VesmarClient::Outcome;

JobStatus::JobStatus() : _text(createText("muted"))
{
    _text->setObjectName(QStringLiteral("jobStatus"));
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(_text);
    column->addWidget(&_failure);
    _text->hide();
}

void JobStatus::watch(Job* job, const QString& done)
{
    _job = job;
    _failure.show({});
    connect(job, &Job::phaseChanged, this, &JobStatus::showPhase);
    connect(job, &Job::finished, this, [this, done] { showEnd(done); });
    _text->show();
    setFocus(); // The button that has begun it is disabled, and the keyboard would go anywhere.
    showPhase();
}

void JobStatus::showPhase()
{
    setLook(_text, "muted");
    _text->setText(words(_job->phase()));
}

void JobStatus::showEnd(const QString& done)
{
    const bool isCompleted = _job->outcome() == Outcome::Completed;
    setLook(_text, isCompleted ? "good" : "danger");
    _text->setText(isCompleted ? done : words(_job->outcome()));
    _failure.show(_job->failure());
    if (_job->failure().isFailure()) {
        Q_EMIT failed(_job->failure());
    }
    _job->deleteLater();
}

} // namespace Panel
