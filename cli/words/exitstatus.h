#pragma once

#include <string>
#include <vector>

/// What the program ends with. A program that a signal ends before it has done what was asked for ends with
/// the sum of `Signalled` and the signal's number, as a shell would report it.
namespace Cli::ExitStatus
{

constexpr int Done = 0;
constexpr int BadUsage = 1;
constexpr int NoLink = 2;           ///< The link did not come up in time.
constexpr int NotDone = 3;          ///< The link came up, but what was asked for was not done.
constexpr int Failed = 4;           ///< The instrument failed. A measurement is confirmed to have stopped.
constexpr int Aborted = 5;          ///< A measurement was aborted, and is confirmed to have stopped.
constexpr int StopNotConfirmed = 6; ///< A measurement may still be running at the instrument.
constexpr int LinkLost = 7;         ///< The link was lost before what was asked for was done.
constexpr int Interrupted = 8; ///< A measurement is done and has stopped, but for a while no reading came.
constexpr int Signalled = 128;

/// An exit status in words.
struct Explained {
    int status;
    std::string words;
};

/// Every exit status, in order; `Signalled` stands for all that it begins.
const std::vector<Explained>& All();

} // namespace Cli::ExitStatus
