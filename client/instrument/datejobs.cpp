#include <VesmarClient/datejobs.h>

#include "client/driver/daterun.h"
#include "client/driver/failures.h"
#include "client/instrument/instrumentstate.h"
#include "client/instrument/jobstate.h"
#include "client/values/dates.h"

namespace VesmarClient
{

namespace
{

Failure InvalidDate()
{
    return FailureNamed(
        "invalid-date",
        QT_TRANSLATE_NOOP("VesmarClient",
                          "The instrument knows dates from 2001-01-01T00:00:00 to 2099-12-31T23:59:59 only."),
        QT_TRANSLATE_NOOP("VesmarClient", "Choose a date that exists, in these years."));
}

} // namespace

void DateJob::receiveReported(const QDateTime& value)
{
    _reported = value;
    Q_EMIT reportedChanged(value);
}

ClockJob* Instrument::setClock(const QDateTime& value, int timeLimit)
{
    auto* const job = new ClockJob(this);
    if (!IsKnownToTheInstrument(value.date()) || !value.time().isValid()) {
        JobState::Of(*job).FailLater(InvalidDate());
        return job;
    }
    auto run = std::make_unique<ClockRun>(AsWallClock(value), std::chrono::milliseconds(timeLimit));
    connect(run.get(), &DateRun::Reported, job, &DateJob::receiveReported);
    _state->Begin(*job, std::move(run));
    return job;
}

CalibrationJob* Instrument::setCalibrationDate(const QDateTime& value, int timeLimit)
{
    auto* const job = new CalibrationJob(this);
    if (!IsKnownToTheInstrument(value.date())) {
        JobState::Of(*job).FailLater(InvalidDate());
        return job;
    }
    auto run = std::make_unique<CalibrationRun>(value.date(), std::chrono::milliseconds(timeLimit));
    connect(run.get(), &DateRun::Reported, job, &DateJob::receiveReported);
    _state->Begin(*job, std::move(run));
    return job;
}

} // namespace VesmarClient
