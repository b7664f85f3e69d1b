#pragma once

namespace Vesmar
{

/// The instrument's mode of operation, as its status reports it (two bits, so every value 0 to 3 occurs).
enum class OperationMode : int {
    Normal = 0, ///< The working mode; the only one in which measurements run.
    Calibration =
        1, ///< Accepts a new calibration date; while connected the library restarts the instrument out of it.
    Mode2 =
        2, ///< A mode of the instrument that the library never asks for and restarts the instrument out of.
    Update = 3 ///< Firmware update; left by a finished update or a restart.
};

} // namespace Vesmar
