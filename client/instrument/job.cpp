#include <VesmarClient/job.h>

#include "client/instrument/jobstate.h"

namespace VesmarClient
{

Job::Job(QObject* parent) : QObject(parent), _state(std::make_unique<JobState>(*this)) {}

Job::~Job() = default;

Phase Job::phase() const
{
    return _state->phase;
}

qint64 Job::elapsed() const
{
    return _state->Elapsed();
}

Outcome Job::outcome() const
{
    return _state->outcome;
}

Failure Job::failure() const
{
    return _state->failure;
}

void Job::abort()
{
    Q_EMIT _state->AbortAsked();
}

} // namespace VesmarClient
