#pragma once

#include <VesmarClient/job.h>

namespace VesmarClient
{

/// Restarts the instrument and waits until it is back.
class VESMARCLIENT_EXPORT RestartJob : public Job
{
    Q_OBJECT

private:
    friend class Instrument;
    using Job::Job;
};

/// Ends whatever runs at the instrument, whoever has started it, and proves that it has stopped. It is
/// completed with the proof only.
class VESMARCLIENT_EXPORT StopJob : public Job
{
    Q_OBJECT

private:
    friend class Instrument;
    using Job::Job;
};

} // namespace VesmarClient
