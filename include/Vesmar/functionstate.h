#pragma once

namespace Vesmar
{

/// The state of the active measurement function on the instrument.
///
/// The status reports it in four bits; 10 to 15 have no name here and are passed on unchanged.
enum class FunctionState : int {
    Unknown = -1, ///< No function was active since the library was loaded.
    Idle = 0,
    Preparing = 1,
    Completed = 2,
    PrepareError = 3,
    Prepared = 4,
    Starting = 5,
    StartError = 6,
    Running = 7,
    Stopping = 8,
    Terminated = 9
};

} // namespace Vesmar
