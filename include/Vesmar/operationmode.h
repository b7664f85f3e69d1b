#pragma once

namespace Vesmar
{

/// The instrument's mode of operation, as its status reports it in two bits.
enum class OperationMode : int {
    /// The normal mode. The library reads the clocks and measures in this mode only.
    Normal = 0,
    /// The mode in which the instrument accepts a new calibration date. The library enters it for nothing
    /// else; when it finds the instrument in this mode, it restarts it into `Normal`.
    Calibration = 1,
    /// A mode that the library never asks for; it restarts the instrument out of it into `Normal`.
    Mode2 = 2,
    /// Firmware update. The instrument leaves it after a finished update or a restart.
    Update = 3
};

} // namespace Vesmar
