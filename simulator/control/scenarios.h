#pragma once

#include <array>
#include <chrono>
#include <optional>

#include <QString>

namespace Simulator
{

/// The faults that the line or the answers of the simulated instrument can have.
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
    Split,
    Flip,
    Drop,
    Double,
    HangUp,
};

/// A fault, the name that commands and options use for it, and what it does.
struct NamedFault {
    Fault fault;
    const char* name;
    const char* meaning;
};

inline constexpr std::array<NamedFault, 14> Faults{{
    {Fault::None, "none", "the instrument answers as it should"},
    {Fault::Silent, "silent", "unplugged: swallows every request"},
    {Fault::BadCrc, "bad-crc", "every answer has a damaged checksum"},
    {Fault::Refuse, "refuse", "every request is refused"},
    {Fault::GarbageBefore, "garbage-before", "two stray bytes in front of every answer"},
    {Fault::GarbageAfter, "garbage-after", "two stray bytes behind every answer"},
    {Fault::Truncated, "truncated", "only the first two bytes of every answer"},
    {Fault::WrongLength, "wrong-length", "one byte too many under a valid checksum"},
    {Fault::Slow, "slow", "answers late; a number of milliseconds may follow (default 1000)"},
    {Fault::Split, "split", "every answer comes a byte at a time, with pauses of 50 ms"},
    {Fault::Flip, "flip", "the first byte of every answer is inverted"},
    {Fault::Drop, "drop", "the first byte of every answer is missing"},
    {Fault::Double, "double", "the first byte of every answer comes twice"},
    {Fault::HangUp, "hang-up",
     "the line breaks and its path is gone; the next fault, or plug, brings a new one"},
}};

/// The delay of `Fault::Slow` when none is given.
inline constexpr std::chrono::milliseconds DefaultSlowAnswer{1000};

/// The ways in which measurements and firmware updates can go wrong. They leave the line alone, except for
/// what an RCD test sends unasked.
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
    // RCD tests
    StartTest,
    RcdOtherFunction,
    RcdCheck,
    RcdCheckOnce,
    RcdCheckLost,
    RcdError,
    RcdErrorOnce,
    RcdSilent,
    RcdSilentOnce,
    RcdNoTa,
    RcdGlued,
    RcdPieces,
    RcdGarbage,
    // firmware updates
    RefusesUpdateMode,
    RefusesInitialize,
    RefusesSector,
    LosesSector,
    RefusesConfirmation,
    StaysInUpdateMode,
    ComesBackInMode2,
};

/// The number that follows a scenario's name: its meaning and its limits.
struct ScenarioNumber {
    const char* what;
    int lowest;
    int highest;
};

inline constexpr ScenarioNumber SectorNumber{"the number of a sector", 1, 65535};
inline constexpr ScenarioNumber StartTestNumber{"the result of the start test", 0, 15};
inline constexpr ScenarioNumber CheckObjectNumber{"a check-object code", 0, 255};
inline constexpr ScenarioNumber RcdErrorNumber{"an error of the RCD test", 0, 14};
inline constexpr ScenarioNumber PauseNumber{"a pause in microseconds", 1, 50000};

/// A scenario, the name that commands and options use for it, and what happens.
struct NamedScenario {
    Scenario scenario;
    const char* name;
    const char* meaning;
    std::optional<ScenarioNumber> number =
        std::nullopt; ///< the number that follows its name, if there is one
};

inline constexpr std::array<NamedScenario, 30> Scenarios{{
    {Scenario::None, "none", "measurements and firmware updates go as they should"},
    {Scenario::RefusesPrepare, "refuses-prepare", "every prepare request is refused"},
    {Scenario::PrepareError, "prepare-error", "preparing ends in the prepare error (state 3)"},
    {Scenario::NeverPrepared, "never-prepared", "preparing never ends (stays in state 1)"},
    {Scenario::StartError, "start-error",
     "starting ends in the start error (state 6); an RCD test refuses the start"},
    {Scenario::StaysStarting, "stays-starting", "starting never ends (stays in state 5)"},
    {Scenario::FallsBack, "falls-back", "starting falls back to prepared (state 5, then 4)"},
    {Scenario::FastSingle, "fast-single",
     "a single measurement is over before it is seen to run (state 5, then 2 with its result)"},
    {Scenario::EndsWithoutResult, "ends-without-result",
     "a measurement ends by itself without a result (state 7, then 9)"},
    {Scenario::RunsOnAfterStop, "runs-on-after-stop", "runs on for about 2 s after a stop (keeps state 7)"},
    {Scenario::StartTest, "start-test", "this is the result of the start test", StartTestNumber},
    {Scenario::RcdOtherFunction, "rcd-other-function",
     "an RCD test that is prepared reports another function"},
    {Scenario::RcdCheck, "rcd-check", "the check before an RCD test always finds this code; 0 is clean",
     CheckObjectNumber},
    {Scenario::RcdCheckOnce, "rcd-check-once", "the check finds this code once, then it is clean",
     CheckObjectNumber},
    {Scenario::RcdCheckLost, "rcd-check-lost", "what the check has found is never answered"},
    {Scenario::RcdError, "rcd-error", "an RCD test reports this error and ends with it", RcdErrorNumber},
    {Scenario::RcdErrorOnce, "rcd-error-once", "one run of an RCD test ends with this error", RcdErrorNumber},
    {Scenario::RcdSilent, "rcd-silent", "the start of an RCD test is acknowledged, but nothing starts"},
    {Scenario::RcdSilentOnce, "rcd-silent-once", "the same for one start only"},
    {Scenario::RcdNoTa, "rcd-no-ta", "the result of an RCD test has no Ta"},
    {Scenario::RcdGlued, "rcd-glued", "two status frames and the result of an RCD test come in one piece"},
    {Scenario::RcdPieces, "rcd-pieces", "what an RCD test sends comes in pieces, with this pause between",
     PauseNumber},
    {Scenario::RcdGarbage, "rcd-garbage", "two stray bytes in front of the result of an RCD test"},
    {Scenario::RefusesUpdateMode, "refuses-update-mode", "the change to update mode is refused"},
    {Scenario::RefusesInitialize, "refuses-initialize", "the initialization of an update is refused"},
    {Scenario::RefusesSector, "refuses-sector", "the sector of this number, from 1, is always refused",
     SectorNumber},
    {Scenario::LosesSector, "loses-sector", "the sector of this number is never answered nor stored",
     SectorNumber},
    {Scenario::RefusesConfirmation, "refuses-confirmation", "every confirmation of an update is refused"},
    {Scenario::StaysInUpdateMode, "stays-in-update-mode",
     "confirmed firmware is not installed: comes back in mode 3 with the old version"},
    {Scenario::ComesBackInMode2, "comes-back-in-mode-2", "comes back in mode 2 from an update"},
}};

std::optional<Fault> FindFault(const QString& name);
std::optional<NamedScenario> FindScenario(const QString& name);

/// Returns the name and, where a number has to follow it, a placeholder.
QString Synopsis(const NamedFault& fault);
QString Synopsis(const NamedScenario& scenario);

} // namespace Simulator
