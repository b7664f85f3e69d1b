#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Brings the instrument into update mode, and waits there for an update to be asked for.
///
/// Sends status in every step, and the change to update mode while the instrument is in another one. Reports
/// 300 if it refuses. Left for updating when the instrument is in update mode and an update is requested.
class AwaitUpdateActionState : public State
{
public:
    AwaitUpdateActionState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnExit() override;
    void OnRunning() override;

private:
    void EnterUpdateMode();
};

} // namespace Vesmar
