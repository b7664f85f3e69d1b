#pragma once

namespace Cli
{

/// Sends the message log to the error output, the library's trace only if it is wanted: the warnings, and
/// what is less than a warning, of the category "default".
void InstallTraceFilter(bool isTraceWanted);

} // namespace Cli
