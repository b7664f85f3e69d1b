#pragma once

namespace Vesmar
{

/// The progress of a long operation. The firmware update is the only one.
enum class OperationState : int {
    Idle = 0,       ///< No operation is under way.
    Started = 1,    ///< The update has begun; nothing has been transferred yet.
    InProgress = 2, ///< Sectors are being transferred; `Tester::OperationProgress` counts up.
    Finished = 3    ///< The instrument has confirmed the update.
};

} // namespace Vesmar
