#pragma once

#include <memory>

#include <QString>
#include <Vesmar/measurementsettings.h>

/// Settings of the function with this name, such as "rpe"; none where there is no such function.
std::unique_ptr<Vesmar::MeasurementSettings> MakeSettings(const QString& name);
