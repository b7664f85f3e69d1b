#pragma once

#include <algorithm>
#include <array>

#include <Vesmar/functionstate.h>

/// Which function states mean what to which state. The sets differ on purpose; nothing above 9 is in any of
/// them.
namespace Vesmar::FunctionStateSets
{

// clang-format off

/// Running: the function ended, and there is no result.
inline constexpr std::array EndedWithoutResult{
    FunctionState::Idle, FunctionState::PrepareError, FunctionState::Prepared, FunctionState::StartError,
    FunctionState::Terminated};

/// Stopping: the function is over.
inline constexpr std::array OverWhenStopping{
    FunctionState::Idle, FunctionState::Completed, FunctionState::Prepared, FunctionState::Terminated};

/// Aborting: the function is over, or did not come to run.
inline constexpr std::array OverWhenAborting{
    FunctionState::Idle, FunctionState::Preparing, FunctionState::Completed, FunctionState::PrepareError,
    FunctionState::Prepared, FunctionState::StartError, FunctionState::Terminated};

/// Stopping and aborting: the function has to be told to stop.
inline constexpr std::array StillRunning{
    FunctionState::Starting, FunctionState::Running};

// clang-format on

template <typename Set>
bool Contains(const Set& set, FunctionState state)
{
    return std::find(set.begin(), set.end(), state) != set.end();
}

} // namespace Vesmar::FunctionStateSets
