#include <VesmarClient/measurement.h>

#include <QElapsedTimer>

#include "client/driver/failures.h"
#include "client/instrument/instrumentstate.h"
#include "client/instrument/jobstate.h"

namespace VesmarClient
{

struct MeasurementState {
    Settings settings;
    Result latest;
    QElapsedTimer sinceLatest;
    QVector<Gap> gaps;
    bool isStopConfirmed = false;
    int keepAliveInterval = 0;
};

Measurement::Measurement(const Settings& settings, QObject* parent)
    : Job(parent), _measurement(new MeasurementState{settings, {}, {}, {}})
{
}

Measurement::~Measurement() = default;

Settings Measurement::settings() const
{
    return _measurement->settings;
}

Result Measurement::latest() const
{
    return _measurement->latest;
}

qint64 Measurement::age() const
{
    return _measurement->latest.isEmpty() ? -1 : _measurement->sinceLatest.elapsed();
}

QVector<Gap> Measurement::gaps() const
{
    return _measurement->gaps;
}

qint64 Measurement::remaining() const
{
    return -1;
}

bool Measurement::isStopConfirmed() const
{
    return _measurement->isStopConfirmed;
}

int Measurement::keepAliveInterval() const
{
    return _measurement->keepAliveInterval;
}

void Measurement::setKeepAliveInterval(int milliseconds)
{
    _measurement->keepAliveInterval = milliseconds;
}

void Measurement::keepAlive() {}

Measurement* Instrument::measure(const Settings& settings)
{
    auto* const measurement = new Measurement(settings, this);
    JobState::Of(*measurement).FailLater(FailureNamed("not-available", "", ""));
    return measurement;
}

Measurement* Instrument::measure(const QString& function, const QVariantMap& options)
{
    return measure(Settings(function, options));
}

} // namespace VesmarClient
