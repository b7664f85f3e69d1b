#pragma once

#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdsettings.h>

namespace CLI
{
class App;
}

namespace Cli
{

/// Adds the options of `rcd`, which fill the settings. `isReMeasured` is whether Re is to be measured first.
void AddRcdOptions(CLI::App& command, Vesmar::RCDSettings& settings, bool& isReMeasured);

/// The same for `rcd-iec`.
void AddRcdIecOptions(CLI::App& command, Vesmar::RCDIECSettings& settings);

} // namespace Cli
