#pragma once

#include <VesmarClient/settings.h>

namespace VesmarClient
{

/// The word that is an option's value where a continuous function runs until it is aborted.
constexpr char Unlimited[] = "unlimited";

/// Everything that is wrong with the settings.
QVector<SettingsProblem> ProblemsOf(const Settings& settings);

} // namespace VesmarClient
