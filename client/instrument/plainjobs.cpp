#include <VesmarClient/plainjobs.h>

#include "client/driver/restartrun.h"
#include "client/driver/stoprun.h"
#include "client/instrument/instrumentstate.h"

namespace VesmarClient
{

RestartJob* Instrument::restart(int timeLimit)
{
    auto* const job = new RestartJob(this);
    _state->Begin(*job, std::make_unique<RestartRun>(std::chrono::milliseconds(timeLimit)));
    return job;
}

StopJob* Instrument::stop()
{
    auto* const job = new StopJob(this);
    _state->BeginAfterAbort(*job, std::make_unique<StopRun>());
    return job;
}

} // namespace VesmarClient
