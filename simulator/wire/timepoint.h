#pragma once

#include <chrono>

namespace Simulator
{

/// The simulator's time: monotonic, the clock that QElapsedTimer reads too.
using Clock = std::chrono::steady_clock;
using TimePoint = Clock::time_point;

} // namespace Simulator
