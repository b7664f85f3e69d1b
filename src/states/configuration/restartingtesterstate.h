#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Puts the instrument back into its normal mode, which restarts it.
///
/// Sends the mode change and, when the instrument was in a mode that the library does not work in, a status
/// request afterwards. Clears `RestartRequested`, and before that status `CommunicationError`, so that a mode
/// change that failed does not start link recovery. Left for the root of the states after one step.
class RestartingTesterState : public State
{
public:
    RestartingTesterState(StateMachineContext* context, State* parentState);

    void OnRunning() override;
};

} // namespace Vesmar
