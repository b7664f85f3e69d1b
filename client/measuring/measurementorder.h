#pragma once

#include <QElapsedTimer>

#include <chrono>
#include <memory>
#include <optional>

#include <Vesmar/measurementresults.h>
#include <Vesmar/rcdsettings.h>

#include <VesmarClient/measurement.h>

#include "client/sessions/measurementsession.h"

namespace VesmarClient
{

/// How long a measurement may keep one waiting.
struct MeasurementLimits {
    MeasurementTimeouts asked;
    std::chrono::milliseconds check{2000};   ///< Enough for several checks of the object under test.
    std::chrono::milliseconds cleanUp{5000}; ///< For a clean-up, whose end nobody reports.
};

/// What is to be measured, in the driver's settings.
struct MeasurementOrder {
    std::unique_ptr<Vesmar::MeasurementSettings> settings;
    bool isReMeasured = false; ///< Whether a Ub/Re test runs first, and gives the Re of these settings.
    bool isGuarded = false;    ///< Whether the guard watches, without which nothing is measured.
    MeasurementLimits limits;
    QElapsedTimer time; ///< The job's own clock: all times are told by it, in milliseconds.
};

/// The settings of the test that measures Re; null where none is to run.
std::unique_ptr<Vesmar::RCDSettings> ReSettingsOf(const MeasurementOrder& order);

/// Puts the Re that such a test has measured into the settings of the measurement. False if there is no Re.
bool AdoptRe(const Vesmar::MeasurementResults& results, const MeasurementOrder& order);

bool IsContinuous(const Vesmar::MeasurementSettings& settings);
bool IsRcd(const Vesmar::MeasurementSettings& settings);

/// How long the function runs; nothing where that is not known.
std::optional<std::chrono::milliseconds> TimeOf(const Vesmar::MeasurementSettings& settings);

/// The session that leads the measurement with these settings.
std::unique_ptr<MeasurementSession> SessionFor(const Vesmar::MeasurementSettings& settings);

/// How long the phase may last. The measurement itself has no limit, nor has the wait for the mains.
std::optional<std::chrono::milliseconds> LimitOf(MeasurementSession::Phase phase,
                                                 const MeasurementLimits& limits);

} // namespace VesmarClient
