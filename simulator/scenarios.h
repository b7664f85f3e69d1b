#pragma once

#include <array>
#include <chrono>

namespace Simulator
{

/// What can be wrong with the line or with the answers of the simulated instrument.
enum class Fault {
    None,
    Silent,
    BadCrc,
    Refuse,
    GarbageBefore,
    GarbageAfter,
    Truncated,
    WrongLength,
    Slow,
    HangUp,
};

/// A fault, the name that commands and options use for it, and what it does.
struct Scenario {
    Fault fault;
    const char* name;
    const char* meaning;
};

inline constexpr std::array<Scenario, 10> Scenarios{{
    {Fault::None, "none", "the instrument answers as it should"},
    {Fault::Silent, "silent", "unplugged: swallows every request"},
    {Fault::BadCrc, "bad-crc", "every answer has a damaged checksum"},
    {Fault::Refuse, "refuse", "every request is refused"},
    {Fault::GarbageBefore, "garbage-before", "two stray bytes in front of every answer"},
    {Fault::GarbageAfter, "garbage-after", "two stray bytes behind every answer"},
    {Fault::Truncated, "truncated", "only the first two bytes of every answer"},
    {Fault::WrongLength, "wrong-length", "one byte too many under a valid checksum"},
    {Fault::Slow, "slow", "answers late; a number of milliseconds may follow (default 1000)"},
    {Fault::HangUp, "hang-up", "the line breaks; the next fault or none brings a new one"},
}};

/// How late `Fault::Slow` answers when nothing else is said.
inline constexpr std::chrono::milliseconds DefaultSlowAnswer{1000};

} // namespace Simulator
