#include "client/driver/daterun.h"

#include <cstdlib>

#include "client/driver/failures.h"
#include "client/line/diagnosis.h"
#include "client/values/dates.h"

namespace VesmarClient
{

namespace
{

using Vesmar::Tester;

constexpr InstrumentDate Clock{&Tester::CurrentDateTime, &Tester::CurrentDateTimeChanged,
                               &Tester::ConfigureCurrentDateTime, &Tester::RetrieveCurrentDateTime};
constexpr InstrumentDate Calibration{&Tester::CalibrationDateTime, &Tester::CalibrationDateTimeChanged,
                                     &Tester::ConfigureCalibrationDateTime,
                                     &Tester::RetrieveCalibrationDateTime};

/// The time of day is not sent: the instrument reports midnight, which differs from this.
QDateTime NoonOf(const QDate& date)
{
    constexpr int Noon = 12;
    return {date, QTime(Noon, 0), Qt::UTC};
}

} // namespace

DateRun::DateRun(const InstrumentDate& date, const QDateTime& value, std::chrono::milliseconds limit)
    : LimitedRun(limit), _date(date), _value(value)
{
}

/// An answer to an earlier question that is still on its way would replace the date before it is sent. After
/// the identity, none is.
void DateRun::Work()
{
    AwaitReadiness([this] { Write(); });
    Instrument().RetrieveDeviceInformation();
}

void DateRun::Write()
{
    Q_EMIT PhaseChanged(Phase::Writing);
    _writer = std::make_unique<DateWriter>(Instrument(), _date);
    connect(_writer.get(), &DateWriter::Asked, this, [this] { Q_EMIT PhaseChanged(Phase::Reading); });
    connect(_writer.get(), &DateWriter::Reported, this, &DateRun::CheckReported);
    _sinceSet.start();
    _writer->Set(_value);
}

void DateRun::Abort()
{
    if (!_writer || MayBeAborted()) {
        End(Outcome::Aborted);
    }
}

void DateRun::CheckReported(const QDateTime& value)
{
    const QDateTime reported = AsWallClock(value);
    Q_EMIT Reported(reported);
    if (IsSet(reported, _sinceSet.elapsed())) {
        End(Outcome::Completed);
    } else {
        End(Outcome::Failed,
            FailureNamed(
                "not-set",
                QT_TRANSLATE_NOOP("VesmarClient",
                                  "The instrument did not take the date: it reports another."),
                QT_TRANSLATE_NOOP("VesmarClient",
                                  "Set it again. If that does not help, have the instrument repaired.")));
    }
}

void DateRun::TimeOver()
{
    constexpr char NotDone[] =
        QT_TRANSLATE_NOOP("VesmarClient", "The instrument has not reported the date as set.");
    const Vesmar::Error error = Instrument().ErrorCode();
    if (IsLinkError(error)) {
        End(Outcome::LinkLost, LinkLost(NotDone, error));
    } else {
        End(Outcome::Failed,
            FailureNamed("not-confirmed", NotDone,
                         QT_TRANSLATE_NOOP("VesmarClient", "Read the date, and set it again.")));
    }
}

ClockRun::ClockRun(const QDateTime& value, std::chrono::milliseconds limit) : DateRun(Clock, value, limit) {}

bool ClockRun::IsSet(const QDateTime& reported, qint64 sinceSet) const
{
    constexpr qint64 Tolerance = 2000;
    return reported.isValid() && std::abs(Value().addMSecs(sinceSet).msecsTo(reported)) <= Tolerance;
}

CalibrationRun::CalibrationRun(const QDate& value, std::chrono::milliseconds limit)
    : DateRun(Calibration, NoonOf(value), limit)
{
}

bool CalibrationRun::IsSet(const QDateTime& reported, qint64 /*sinceSet*/) const
{
    return reported.date() == Value().date();
}

} // namespace VesmarClient
