#pragma once

#include <chrono>

/// The clock of the soak: real time without what the machine keeps back from the driver's worker. It stands
/// still while the worker neither sleeps, as long as it wants to, nor runs. So a busy machine does not count
/// as a slow driver; nor does a lock that the worker waits for, which the storm looks at in virtual time. It
/// is what `VirtualTime` means in this program.
namespace FairClock
{

/// How long the clock has stood still.
std::chrono::nanoseconds HeldUp();

} // namespace FairClock
