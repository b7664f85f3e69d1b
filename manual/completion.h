#pragma once

#include <string>

#include "manual/places.h"

/// Scripts that complete the program's command line. Each needs nothing but its shell.
namespace Manual
{

std::string BashCompletion(const CLI::App& program, const Placeholders& placeholders);
std::string ZshCompletion(const CLI::App& program, const Placeholders& placeholders);
std::string FishCompletion(const CLI::App& program, const Placeholders& placeholders);

} // namespace Manual
