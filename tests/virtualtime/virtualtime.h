#pragma once

#include <chrono>

/// A clock of the test program's own. In a program that is linked with it, whatever sleeps, waits or looks at
/// a clock through the C library does so in virtual time: time stands still while any thread runs, and jumps
/// to the next moment that somebody waits for when all of them wait. A test that waits for minutes is over at
/// once, and a busy machine changes nothing.
///
/// It covers the sleeps, the clocks, the condition variables, the futexes that Qt's mutexes and semaphores
/// are made of, polls, and the joining of threads. A mutex of the C library may be held while a thread runs,
/// but not while it sleeps. A loop that only yields never ends. Nothing outside of the process is waited for:
/// the bytes of a pseudo-terminal inside of it are waited for in real time (see ptytraffic.h).
namespace VirtualTime
{

/// The time since the program was started.
std::chrono::nanoseconds Now();

/// Sleeps in virtual time.
void Sleep(std::chrono::nanoseconds time);

/// How many threads have begun and have not ended.
int ThreadCount();

} // namespace VirtualTime
