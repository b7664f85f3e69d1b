#pragma once

#include <sys/types.h>

/// The bytes that are under way between the two ends of a pseudo-terminal. The system carries them over on a
/// thread of its own, which may be late on a busy machine; in virtual time they shall not be.
namespace PtyTraffic
{

/// Bytes were written to the descriptor, or read from it. Other descriptors than those of pseudo-terminals do
/// not count.
void Written(int descriptor, ssize_t count);
void Received(int descriptor, ssize_t count);

/// Waits in real time until bytes that are under way to the descriptor can be read there.
void AwaitArrival(int descriptor);

/// What was on its way to the descriptor is gone.
void Forget(int descriptor);

/// The descriptor is about to be closed; a pseudo-terminal ends with its master.
void Close(int descriptor);

} // namespace PtyTraffic
