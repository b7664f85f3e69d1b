#pragma once

namespace Vesmar
{

/// The progress of a long operation; only a firmware update is one.
enum class OperationState : int {
    Idle = 0,       ///< No operation.
    Started = 1,    ///< The operation was taken up.
    InProgress = 2, ///< Sectors are being transferred; `OperationProgress` counts up.
    Finished = 3    ///< The instrument confirmed the update.
};

} // namespace Vesmar
