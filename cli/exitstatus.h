#pragma once

/// What the program ends with. One that is ended by a signal before it has done what was asked for ends with
/// `Signalled` and the signal's number, as a shell would report it.
namespace Cli::ExitStatus
{

constexpr int Done = 0;
constexpr int BadUsage = 1;
constexpr int NoLink = 2;  ///< The link did not come up in time.
constexpr int NotDone = 3; ///< The link came up, but what was asked for was not done.
constexpr int Signalled = 128;

} // namespace Cli::ExitStatus
