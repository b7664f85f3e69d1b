#pragma once

namespace Vesmar
{

/// How far a measurement has come, as the library leads it.
///
/// The RCD tests use the same values for their own phases; each comment says where they differ.
enum class MeasurementState : int {
    /// An RCD function is selected, and no test of it is under way. Other measurements pass through this
    /// value for a moment when they are aborted while nothing runs, so that `Stopped` always is a change.
    Unknown = -1,
    /// No measurement has begun since `Tester::Enable`. RCD: the Ub/Re test is prepared and waits for its
    /// start; after the start, every RCD test begins with this phase and waits until the instrument is ready.
    Idle = 0,
    /// Measurement mode is active and waits for settings, or the instrument prepares the function. RCD: the
    /// library waits until the instrument is ready for the Ub/Re test; after the start of any test, its
    /// settings are being sent.
    Preparing = 1,
    /// The instrument reports the function as prepared. Only from here does a start proceed, and an abort has
    /// no effect here. RCD: before a Ub/Re test is started, its settings are being sent; after the start, the
    /// library waits until the instrument reports the function as prepared.
    Prepared = 2,
    /// The start is being sent, and the instrument has not confirmed it yet.
    Starting = 3,
    /// The instrument has confirmed the start.
    Running = 4,
    /// A single measurement has a result; a continuous one delivers readings. RCD tests do not use it.
    Measuring = 5,
    /// The measurement is being ended or aborted. RCD tests do not use it.
    Stopping = 6,
    /// The instrument has confirmed the end, or nothing ran when the application asked for an abort. RCD: the
    /// test is over, with a result or with an error; `Unknown` follows one step later.
    Stopped = 7
};

} // namespace Vesmar
