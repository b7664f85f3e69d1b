#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Puts the instrument back into its normal mode, which restarts it.
///
/// Sends the mode change and, when the mode that led here is none that the library works in, a status request
/// afterwards. Clears `RestartRequested`, and `CommunicationError`, so that what failed during the restart
/// does not start link recovery. One step, then back to the root.
class RestartingTesterState : public State
{
public:
    RestartingTesterState(StateMachineContext* context, State* parentState);

    void OnRunning() override;
};

} // namespace Vesmar
