#pragma once

#include <QString>

#include <array>
#include <chrono>
#include <optional>

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
struct NamedFault {
    Fault fault;
    const char* name;
    const char* meaning;
};

inline constexpr std::array<NamedFault, 10> Faults{{
    {Fault::None, "none", "the instrument answers as it should"},
    {Fault::Silent, "silent", "unplugged: swallows every request"},
    {Fault::BadCrc, "bad-crc", "every answer has a damaged checksum"},
    {Fault::Refuse, "refuse", "every request is refused"},
    {Fault::GarbageBefore, "garbage-before", "two stray bytes in front of every answer"},
    {Fault::GarbageAfter, "garbage-after", "two stray bytes behind every answer"},
    {Fault::Truncated, "truncated", "only the first two bytes of every answer"},
    {Fault::WrongLength, "wrong-length", "one byte too many under a valid checksum"},
    {Fault::Slow, "slow", "answers late; a number of milliseconds may follow (default 1000)"},
    {Fault::HangUp, "hang-up",
     "the line breaks and its path is gone; the next fault, or plug, brings a new one"},
}};

/// How late `Fault::Slow` answers when nothing else is said.
inline constexpr std::chrono::milliseconds DefaultSlowAnswer{1000};

/// How measurements and firmware updates can go other than well. The line is not concerned.
enum class Scenario {
    None,
    // measurements
    RefusesPrepare,
    PrepareError,
    NeverPrepared,
    StartError,
    StaysStarting,
    FallsBack,
    FastSingle,
    EndsWithoutResult,
    RunsOnAfterStop,
    // firmware updates
    RefusesUpdateMode,
    RefusesInitialize,
    RefusesSector,
    LosesSector,
    RefusesConfirmation,
    StaysInUpdateMode,
    ComesBackInMode2,
};

/// A scenario, the name that commands and options use for it, and what happens.
struct NamedScenario {
    Scenario scenario;
    const char* name;
    const char* meaning;
    bool namesSector = false; ///< the number of a sector follows its name
};

inline constexpr std::array<NamedScenario, 17> Scenarios{{
    {Scenario::None, "none", "measurements and firmware updates go as they should"},
    {Scenario::RefusesPrepare, "refuses-prepare", "every prepare request is refused"},
    {Scenario::PrepareError, "prepare-error", "preparing ends in the prepare error (state 3)"},
    {Scenario::NeverPrepared, "never-prepared", "preparing never ends (stays in state 1)"},
    {Scenario::StartError, "start-error", "starting ends in the start error (state 6)"},
    {Scenario::StaysStarting, "stays-starting", "starting never ends (stays in state 5)"},
    {Scenario::FallsBack, "falls-back", "starting falls back to prepared (state 5, then 4)"},
    {Scenario::FastSingle, "fast-single",
     "a single measurement is over before it is seen to run (state 5, then 2 with its result)"},
    {Scenario::EndsWithoutResult, "ends-without-result",
     "a measurement ends by itself without a result (state 7, then 9)"},
    {Scenario::RunsOnAfterStop, "runs-on-after-stop", "runs on for about 2 s after a stop (keeps state 7)"},
    {Scenario::RefusesUpdateMode, "refuses-update-mode", "the change to update mode is refused"},
    {Scenario::RefusesInitialize, "refuses-initialize", "the initialization of an update is refused"},
    {Scenario::RefusesSector, "refuses-sector", "the sector of this number, from 1, is always refused", true},
    {Scenario::LosesSector, "loses-sector", "the sector of this number is never answered nor stored", true},
    {Scenario::RefusesConfirmation, "refuses-confirmation", "every confirmation of an update is refused"},
    {Scenario::StaysInUpdateMode, "stays-in-update-mode",
     "confirmed firmware is not installed: comes back in mode 3 with the old version"},
    {Scenario::ComesBackInMode2, "comes-back-in-mode-2", "comes back in mode 2 from an update"},
}};

std::optional<Fault> FindFault(const QString& name);
std::optional<NamedScenario> FindScenario(const QString& name);

/// The name with what has to follow it.
QString Synopsis(const NamedFault& fault);
QString Synopsis(const NamedScenario& scenario);

} // namespace Simulator
