#pragma once

#include <optional>

#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdsettings.h>

namespace Vesmar
{

/// The mode of the settings if they are those of the RCD test.
inline std::optional<RCDSettings::RCDMode> ModeOfRCD(const MeasurementSettings& settings)
{
    const auto* rcd = dynamic_cast<const RCDSettings*>(&settings);
    return rcd != nullptr ? std::make_optional(rcd->GetMode()) : std::nullopt;
}

/// The mode of the settings if they are those of the IEC variant of the RCD test.
inline std::optional<RCDIECSettings::RCDIECMode> ModeOfRCDIEC(const MeasurementSettings& settings)
{
    const auto* rcdIEC = dynamic_cast<const RCDIECSettings*>(&settings);
    return rcdIEC != nullptr ? std::make_optional(rcdIEC->GetMode()) : std::nullopt;
}

} // namespace Vesmar
