#pragma once

namespace Vesmar
{

/// The life cycle of one measurement, as the library leads it.
enum class MeasurementState : int {
    Unknown = -1,  ///< A moment before `Stopped`, so that an abort always signals a change; the start of an
                   ///< RCD test.
    Idle = 0,      ///< Nothing prepared since the link was enabled.
    Preparing = 1, ///< The settings go to the instrument, or wait to be given.
    Prepared = 2,  ///< The instrument reports the function prepared; a start proceeds from here only.
    Starting = 3,  ///< The start was requested.
    Running = 4,   ///< The start is confirmed.
    Measuring = 5, ///< Results are being delivered.
    Stopping = 6,  ///< The measurement ends or is being aborted.
    Stopped = 7    ///< The instrument confirmed the end, or nothing was running when an abort was asked for.
};

} // namespace Vesmar
