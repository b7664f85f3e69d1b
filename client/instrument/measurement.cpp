#include <VesmarClient/measurement.h>

#include <cmath>

#include <QCoreApplication>

#include "client/catalogue/driversettings.h"
#include "client/driver/failures.h"
#include "client/instrument/instrumentstate.h"
#include "client/instrument/jobstate.h"
#include "client/instrument/measurementstate.h"

namespace VesmarClient
{

namespace
{

Failure InvalidSettings(const QVector<SettingsProblem>& problems)
{
    Failure failure = FailureNamed("invalid-settings",
                                   QT_TRANSLATE_NOOP("VesmarClient", "These settings cannot be measured."),
                                   QT_TRANSLATE_NOOP("VesmarClient", "Correct the settings."));
    for (const SettingsProblem& problem : problems) {
        failure.causes.append(problem.message);
    }
    return failure;
}

bool IsGuarded(const QString& function, GuardPolicy policy)
{
    return policy == GuardPolicy::Always ||
           (policy == GuardPolicy::Dangerous && Functions::find(function).isDangerous);
}

MeasurementOrder OrderOf(const Settings& settings, const MeasurementTimeouts& timeouts, GuardPolicy policy,
                         const QElapsedTimer& time)
{
    MeasurementOrder order;
    order.limits.asked = timeouts;
    order.isGuarded = IsGuarded(settings.function(), policy);
    order.settings = CreateDriverSettings(settings);
    order.isReMeasured = settings.value(QStringLiteral("with-ub-re")).toBool();
    const QVariant cleanUp = settings.value(QStringLiteral("clean-up-time"));
    if (cleanUp.isValid()) {
        order.limits.cleanUp = std::chrono::milliseconds(std::llround(cleanUp.toDouble() * 1000));
    }
    order.time = time;
    return order;
}

} // namespace

Measurement::Measurement(const Settings& settings, QObject* parent)
    : Job(parent), _measurement(std::make_unique<MeasurementState>(*this, settings))
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
    return _measurement->Age();
}

QVector<Gap> Measurement::gaps() const
{
    return _measurement->gaps;
}

qint64 Measurement::remaining() const
{
    return _measurement->Remaining();
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
    _measurement->SetKeepAliveInterval(milliseconds);
}

void Measurement::keepAlive()
{
    Q_EMIT _measurement->KeptAlive();
}

Measurement* Instrument::measure(const Settings& settings, const MeasurementTimeouts& timeouts)
{
    auto* const measurement = new Measurement(settings, this);
    const QVector<SettingsProblem> problems = settings.validate();
    if (!problems.isEmpty()) {
        JobState::Of(*measurement).FailLater(InvalidSettings(problems));
        return measurement;
    }
    MeasurementState& state = *measurement->_measurement;
    auto run = std::make_unique<MeasurementRun>(OrderOf(settings, timeouts, _state->guardPolicy, state.time));
    state.Connect(*run);
    _state->Begin(*measurement, std::move(run));
    return measurement;
}

Measurement* Instrument::measure(const QString& function, const QVariantMap& options)
{
    return measure(Settings(function, options));
}

} // namespace VesmarClient
