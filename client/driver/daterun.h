#pragma once

#include <QElapsedTimer>

#include "client/driver/limitedrun.h"
#include "client/sessions/datewriter.h"

namespace VesmarClient
{

/// Sets one of the two dates that the instrument keeps, and reads it back.
class DateRun : public LimitedRun
{
    Q_OBJECT

public:
    /// The value's fields are the instrument's.
    DateRun(const InstrumentDate& date, const QDateTime& value, std::chrono::milliseconds limit);

    void Abort() override;

Q_SIGNALS:
    /// The instrument itself has reported this. The fields are its own, as a time in UTC.
    void Reported(const QDateTime& value);

protected:
    void Work() override;
    void TimeOver() override;

    /// Whether the instrument, which has been given the date so many milliseconds ago, shows it.
    virtual bool IsSet(const QDateTime& reported, qint64 sinceSet) const = 0;
    /// Whether it is harmless to end while the date is being sent.
    virtual bool MayBeAborted() const { return true; }

    const QDateTime& Value() const { return _value; }

private:
    void Write();
    void CheckReported(const QDateTime& value);

    InstrumentDate _date;
    QDateTime _value;
    std::unique_ptr<DateWriter> _writer;
    QElapsedTimer _sinceSet;
};

/// Sets the clock. It is set once it shows the time that has passed since then.
class ClockRun : public DateRun
{
    Q_OBJECT

public:
    ClockRun(const QDateTime& value, std::chrono::milliseconds limit);

protected:
    bool IsSet(const QDateTime& reported, qint64 sinceSet) const override;
};

/// Sets the date of the calibration, by way of the instrument's calibration mode, in which it must not be
/// left: the run is not aborted.
class CalibrationRun : public DateRun
{
    Q_OBJECT

public:
    CalibrationRun(const QDate& value, std::chrono::milliseconds limit);

protected:
    bool IsSet(const QDateTime& reported, qint64 sinceSet) const override;
    bool MayBeAborted() const override { return false; }
};

} // namespace VesmarClient
