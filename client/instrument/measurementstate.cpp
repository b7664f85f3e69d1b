#include "client/instrument/measurementstate.h"

#include <algorithm>

namespace VesmarClient
{

namespace
{

constexpr int ShortestKeepAliveInterval = 100;

} // namespace

MeasurementState::MeasurementState(Measurement& measurement, const Settings& asked)
    : settings(asked), _measurement(measurement)
{
    time.start();
    connect(&measurement, &Job::elapsedChanged, this, &MeasurementState::TellTimes);
}

void MeasurementState::Connect(const MeasurementRun& run)
{
    connect(this, &MeasurementState::KeepAliveIntervalSet, &run, &MeasurementRun::SetKeepAliveInterval);
    connect(this, &MeasurementState::KeptAlive, &run, &MeasurementRun::KeepAlive);
    connect(&run, &MeasurementRun::ResultRead, this, &MeasurementState::KeepResult);
    connect(&run, &MeasurementRun::ResultsWithdrawn, this, [this] { latest = {}; });
    connect(&run, &MeasurementRun::GapsChanged, this, &MeasurementState::KeepGaps);
    connect(&run, &MeasurementRun::TimeBegan, this, [this](qint64 endsAt) { _endsAt = endsAt; });
    connect(&run, &MeasurementRun::StopConfirmed, this, &MeasurementState::ConfirmStop);
}

qint64 MeasurementState::Remaining() const
{
    if (_endsAt < 0) {
        return -1;
    }
    return _measurement.phase() == Phase::Running ? std::max<qint64>(_endsAt - time.elapsed(), 0) : 0;
}

void MeasurementState::SetKeepAliveInterval(int milliseconds)
{
    const int interval = milliseconds > 0 ? std::max(milliseconds, ShortestKeepAliveInterval) : 0;
    if (interval == keepAliveInterval) {
        return;
    }
    keepAliveInterval = interval;
    Q_EMIT KeepAliveIntervalSet(interval);
    Q_EMIT _measurement.keepAliveIntervalChanged(interval);
}

void MeasurementState::KeepResult(const Result& result, qint64 readAt)
{
    latest = result;
    _readAt = readAt;
    Q_EMIT _measurement.reading(result);
}

void MeasurementState::KeepGaps(const QVector<Gap>& told)
{
    gaps = told;
    Q_EMIT _measurement.gapsChanged();
}

void MeasurementState::ConfirmStop()
{
    isStopConfirmed = true;
    Q_EMIT _measurement.isStopConfirmedChanged(true);
}

void MeasurementState::TellTimes()
{
    if (!latest.isEmpty()) {
        Q_EMIT _measurement.ageChanged(Age());
    }
    if (_endsAt >= 0) {
        Q_EMIT _measurement.remainingChanged(Remaining());
    }
}

} // namespace VesmarClient
