#pragma once

#include <CLI/CLI.hpp>

namespace Cli
{

/// Makes a number of seconds of a time with a unit: "500ms", "5 s", "2min" and "1h". Anything else stays as
/// it is, for the option to accept or to refuse.
CLI::Validator InSeconds();

} // namespace Cli
