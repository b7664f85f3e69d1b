#pragma once

#include <memory>

#include <Vesmar/measurementsettings.h>

#include <VesmarClient/settings.h>

namespace VesmarClient
{

/// The driver's settings with every option that is set; the driver's defaults are those of the catalogue.
/// Null for settings that are not valid.
std::unique_ptr<Vesmar::MeasurementSettings> CreateDriverSettings(const Settings& settings);

} // namespace VesmarClient
