#pragma once

namespace Vesmar
{

/// The state of the active measurement function, as the instrument's status reports it in four bits.
///
/// Each comment says what the library concludes from the state. The values 10 to 15 have no name and are
/// passed on unchanged; the library waits while it sees one of them.
enum class FunctionState : int {
    /// No status has reported an active function yet.
    Unknown = -1,
    /// The function is idle. After a start it is over; without a result the measurement has failed (202).
    Idle = 0,
    /// The function is being prepared. An abort counts it as over, because it does not run.
    Preparing = 1,
    /// The function has completed. A running measurement waits for its result. While the function is to be
    /// stopped, it counts as over.
    Completed = 2,
    /// The function could not be prepared: `PrepareFailed` (200), `StartFailed` (201) while it is being
    /// started, `MeasurementFailed` (202) while it runs. In an RCD test, the library asks what is wrong with
    /// the object under test.
    PrepareError = 3,
    /// The function is prepared and can be started. If it is reported again after the start was accepted, the
    /// measurement has failed (202).
    Prepared = 4,
    /// The function has accepted the start. While it is to be stopped, the library sends the stop again.
    Starting = 5,
    /// The function could not be started: `StartFailed` (201), or `MeasurementFailed` (202) while it runs.
    StartError = 6,
    /// The function runs. While it is to be stopped, the library sends the stop again.
    Running = 7,
    /// The function is stopping; the library waits for its end. While it is being started, it counts as
    /// running.
    Stopping = 8,
    /// The function was terminated, which ends the measurement; without a result it has failed (202, or 521
    /// in an RCD test). While it is being started, it counts as running.
    Terminated = 9
};

} // namespace Vesmar
