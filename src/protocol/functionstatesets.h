#pragma once

#include <algorithm>
#include <array>

#include <Vesmar/error.h>
#include <Vesmar/functionstate.h>

/// What the state of a function means to which state of the machine. The sets differ on purpose; nothing
/// above 9 is in any of them.
namespace Vesmar::FunctionStateSets
{

/// Running: the function ended, and there is no result.
inline constexpr std::array EndedWithoutResult{FunctionState::Idle, FunctionState::PrepareError,
                                               FunctionState::Prepared, FunctionState::StartError,
                                               FunctionState::Terminated};

/// Stopping: the function is over.
inline constexpr std::array OverWhenStopping{FunctionState::Idle, FunctionState::Completed,
                                             FunctionState::Prepared, FunctionState::Terminated};

/// Aborting: the function is over, or did not come to run.
inline constexpr std::array OverWhenAborting{
    FunctionState::Idle,     FunctionState::Preparing,  FunctionState::Completed, FunctionState::PrepareError,
    FunctionState::Prepared, FunctionState::StartError, FunctionState::Terminated};

/// Stopping and aborting: the function has to be told to stop.
inline constexpr std::array StillRunning{FunctionState::Starting, FunctionState::Running};

template <typename Set>
bool Contains(const Set& set, FunctionState state)
{
    return std::find(set.begin(), set.end(), state) != set.end();
}

/// Starting: the error that this state ends the start with; `NoErrors` while nothing is wrong. A function
/// that has been seen starting and is merely prepared again was given up.
constexpr Error ErrorWhenStarting(FunctionState state, bool hasBeenStarting)
{
    switch (state) {
    case FunctionState::PrepareError:
    case FunctionState::StartError:
        return Error::StartFailed;
    case FunctionState::Prepared:
        return hasBeenStarting ? Error::MeasurementFailed : Error::NoErrors;
    default:
        return Error::NoErrors;
    }
}

} // namespace Vesmar::FunctionStateSets
