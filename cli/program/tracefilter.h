#pragma once

namespace Cli
{

/// Sends the message log to the error output. The library's trace, which is the warnings and the milder
/// messages of the category "default", is sent only if it is wanted.
void InstallTraceFilter(bool isTraceWanted);

} // namespace Cli
