#pragma once

#include <Vesmar/measurementtype.h>

namespace Vesmar
{

/// The four runs of an RCD test, each of which is a state.
enum class RCDRun { UbRe, IaTa, IECIaTa, CleanUp };

/// What a rule says for each of the runs.
template <typename Value>
struct RCDRule {
    Value ubRe;
    Value iaTa;
    Value iecIaTa;
    Value cleanUp;

    constexpr Value operator[](RCDRun run) const
    {
        return run == RCDRun::UbRe      ? ubRe
               : run == RCDRun::IaTa    ? iaTa
               : run == RCDRun::IECIaTa ? iecIaTa
                                        : cleanUp;
    }
};

/// All in which the phases of the four runs differ. Each rule has four values, which stand in this order: the
/// Ub/Re test, the Ia/Ta test, the IEC Ia/Ta test, the IEC clean-up. Whatever no rule mentions is the same in
/// all four: budgets, time limits, error codes, and a pause after a refused or damaged status, prepare or
/// start. Each state decides by itself with which settings its run does anything.
namespace RCDRules
{

enum class PhaseWords { None, Green, BlackThenGreen, CleanUp };
enum class RunningFrom { Start, Entry, Never };
enum class Counted { EveryPoll, AllButThoseAfter507, NoneAfterAnObjectError };
enum class Results { UbRe, IaTa, None };

// Every step.

/// How a step names its phase on the log.
inline constexpr RCDRule<PhaseWords> NamesPhase{PhaseWords::Green, PhaseWords::None,
                                                PhaseWords::BlackThenGreen, PhaseWords::CleanUp};
/// From when on `IsMeasurementRunning` is set. Where it is set at all, leaving the state clears it.
inline constexpr RCDRule<RunningFrom> IsRunningFrom{RunningFrom::Start, RunningFrom::Entry,
                                                    RunningFrom::Entry, RunningFrom::Never};

// Idle: waiting until the instrument is ready for a test.

/// A status that was answered is followed by a pause, whatever it says.
inline constexpr RCDRule<bool> PausesAfterIdleStatus{true, false, false, false};

// Preparing: handing the settings to the instrument.

/// An acknowledged preparation gives the polls back, and forgets what was wrong with the object under test.
inline constexpr RCDRule<bool> PreparationRestoresPolls{false, false, true, true};

// Prepared: polling until the instrument has prepared the function.

/// A preparation that is asked for meanwhile is forgotten.
inline constexpr RCDRule<bool> DropsPrepareRequest{true, true, false, false};
/// The function that the instrument must report; any other one ends the run with 398.
inline constexpr RCDRule<MeasurementType> Function{MeasurementType::RCD, MeasurementType::RCD,
                                                   MeasurementType::RCDIEC, MeasurementType::RCDIEC};
/// The instrument's error in a poll goes to `ErrorCode`. It ends the run in any case.
inline constexpr RCDRule<bool> ReportsPollError{true, true, false, false};
/// The polls that use up the budget. As long as every poll finds an object error after which none counts, a
/// run polls without limit.
inline constexpr RCDRule<Counted> CountsPolls{Counted::EveryPoll, Counted::EveryPoll,
                                              Counted::AllButThoseAfter507, Counted::NoneAfterAnObjectError};
/// Each poll is told on the log, with its number and its result.
inline constexpr RCDRule<bool> TracesPolls{false, false, false, true};
/// Once the polls are used up, the run ends with the error that the last poll found in the object, if any,
/// and not with 401.
inline constexpr RCDRule<bool> EndsWithObjectError{false, false, true, true};
/// Once the function is prepared, `ErrorCode` is cleared.
inline constexpr RCDRule<bool> PreparedClearsError{false, false, false, true};
/// Once the function is prepared, the start waits for a pause.
inline constexpr RCDRule<bool> PausesOncePrepared{true, false, false, true};
/// A prepare error without a new measurement, in which the object cannot be checked, is followed by a pause.
inline constexpr RCDRule<bool> PausesAfterPrepareError{false, true, true, true};
/// The function states besides prepared and prepare error are followed by a pause.
inline constexpr RCDRule<bool> PausesWhileNotPrepared{false, true, true, false};
/// An object check that was refused or damaged is followed by a pause.
inline constexpr RCDRule<bool> PausesAfterFailedCheck{true, true, false, false};
/// A clean object check, which overrides the prepare error and leads to the start, clears `ErrorCode`.
inline constexpr RCDRule<bool> CleanCheckClearsError{false, false, true, true};
/// An object error, and a check without an answer counts as one, is followed by a pause, or, where it is 507,
/// reported and named on the log.
inline constexpr RCDRule<bool> WaitsForObject{false, false, true, false};

// Starting and running: what ends the run.

/// While an abort is pending, the run neither starts nor waits for results.
inline constexpr RCDRule<bool> AbortHoldsStart{true, false, false, false};
/// The results that the run waits for. Without any, the run is over once it is started.
inline constexpr RCDRule<Results> Awaits{Results::UbRe, Results::IaTa, Results::IaTa, Results::None};
/// A test that stays silent ends with 520, and has no starts left. In the other runs it is started again.
inline constexpr RCDRule<bool> SilenceEndsTheRun{true, false, false, false};
/// When the function was terminated with 525, the run begins anew, with what is left of its budgets. Any
/// other termination ends a run with 521.
inline constexpr RCDRule<bool> Error525BeginsAnew{false, false, true, false};

} // namespace RCDRules

} // namespace Vesmar
