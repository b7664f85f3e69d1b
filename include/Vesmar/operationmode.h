#pragma once

namespace Vesmar
{

/// The instrument's mode of operation, as its status reports it in two bits.
enum class OperationMode : int {
    /// The working mode, the only one in which measurements run.
    Normal = 0,
    /// Accepts a new calibration date. The library enters it for that alone, and restarts the instrument out
    /// of it else.
    Calibration = 1,
    /// Never asked for by the library, which restarts the instrument out of it.
    Mode2 = 2,
    /// Firmware update; left by a finished update or a restart.
    Update = 3
};

} // namespace Vesmar
