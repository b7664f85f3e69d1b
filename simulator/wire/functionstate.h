#pragma once

namespace Simulator
{

/// How far a measurement function has come, as the status tells it.
enum class FunctionState : int {
    Idle = 0,
    Preparing = 1,
    Completed = 2,
    PrepareError = 3,
    Prepared = 4,
    Starting = 5,
    StartError = 6,
    Running = 7,
    Stopping = 8,
    Terminated = 9,
};

} // namespace Simulator
