#include "client/measuring/measurementorder.h"

#include <cmath>

#include <Vesmar/continuousmeasurementsettings.h>
#include <Vesmar/hvtestsettings.h>
#include <Vesmar/rcdresults.h>

#include "client/sessions/rcdsession.h"
#include "client/words/readings.h"

namespace VesmarClient
{

namespace
{

using std::chrono::milliseconds;
using Vesmar::ContinuousMeasurementSettings;
using Vesmar::HVTestSettings;
using Vesmar::MeasurementSettings;
using Vesmar::MeasurementType;
using Vesmar::RCDSettings;
using SessionPhase = MeasurementSession::Phase;

/// The seconds that the driver counts.
std::optional<int> SecondsOf(const MeasurementSettings& settings)
{
    const auto* const continuous = dynamic_cast<const ContinuousMeasurementSettings*>(&settings);
    const int seconds = continuous != nullptr ? continuous->GetTime() : -1;
    return seconds >= 0 ? std::make_optional(seconds) : std::nullopt;
}

} // namespace

std::unique_ptr<RCDSettings> ReSettingsOf(const MeasurementOrder& order)
{
    if (!order.isReMeasured) {
        return nullptr;
    }
    auto settings = std::make_unique<RCDSettings>(static_cast<RCDSettings&>(*order.settings));
    settings->SetMode(RCDSettings::RCDMode::UbRe);
    return settings;
}

bool AdoptRe(const Vesmar::MeasurementResults& results, const MeasurementOrder& order)
{
    const float resistance = static_cast<const Vesmar::RCDResults&>(results)._re;
    static_cast<RCDSettings&>(*order.settings).SetRe(resistance);
    return IsPresent(resistance);
}

bool IsContinuous(const MeasurementSettings& settings)
{
    return dynamic_cast<const ContinuousMeasurementSettings*>(&settings) != nullptr;
}

bool IsRcd(const MeasurementSettings& settings)
{
    return RcdModeOf(settings) != nullptr;
}

/// The first second of a high-voltage test lasts longer.
std::optional<milliseconds> TimeOf(const MeasurementSettings& settings)
{
    const std::optional<int> seconds = SecondsOf(settings);
    if (!seconds) {
        return std::nullopt;
    }
    const auto* const hvTest = dynamic_cast<const HVTestSettings*>(&settings);
    const double offset = hvTest != nullptr ? hvTest->GetMeasurementTimeOffset() : 0;
    return std::chrono::seconds(*seconds) + milliseconds(std::llround(offset * 1000));
}

std::unique_ptr<MeasurementSession> SessionFor(const MeasurementSettings& settings)
{
    if (const RcdMode* mode = RcdModeOf(settings)) {
        return std::make_unique<RcdSession>(mode->test);
    }
    return std::make_unique<MeasurementSession>(settings.GetMeasurementType(), !IsContinuous(settings),
                                                SecondsOf(settings));
}

std::optional<milliseconds> LimitOf(SessionPhase phase, const MeasurementLimits& limits)
{
    switch (phase) {
    case SessionPhase::Preparing:
    case SessionPhase::Starting:
        return milliseconds(limits.asked.prepare);
    case SessionPhase::Checking:
        return limits.check;
    case SessionPhase::CleaningUp:
        return limits.cleanUp;
    case SessionPhase::AwaitingIdle:
    case SessionPhase::Stopping:
    case SessionPhase::Leaving:
        return milliseconds(limits.asked.stop);
    case SessionPhase::AwaitingMains:
    case SessionPhase::Running:
    case SessionPhase::Ended:
        break;
    }
    return std::nullopt;
}

} // namespace VesmarClient
