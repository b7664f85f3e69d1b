#pragma once

#include <QDateTime>

#include <VesmarClient/job.h>

namespace VesmarClient
{

/// Sets one of the two dates that the instrument keeps, and reads it back.
class VESMARCLIENT_EXPORT DateJob : public Job
{
    Q_OBJECT
    Q_PROPERTY(QDateTime reported READ reported NOTIFY reportedChanged)

public:
    /// The date that the instrument itself has reported after it was set; invalid before. The fields are what
    /// a clock on the wall shows: the instrument knows no time zones.
    QDateTime reported() const { return _reported; }

Q_SIGNALS:
    void reportedChanged(const QDateTime& value);

protected:
    using Job::Job;

private:
    friend class Instrument;

    void receiveReported(const QDateTime& value);

    QDateTime _reported;
};

/// Sets the instrument's clock.
class VESMARCLIENT_EXPORT ClockJob : public DateJob
{
    Q_OBJECT

private:
    friend class Instrument;
    using DateJob::DateJob;
};

/// Sets the date of the instrument's calibration.
class VESMARCLIENT_EXPORT CalibrationJob : public DateJob
{
    Q_OBJECT

private:
    friend class Instrument;
    using DateJob::DateJob;
};

} // namespace VesmarClient
