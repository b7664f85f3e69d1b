#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Brings the instrument into update mode, and waits there until an update is requested.
///
/// Every step sends status and, while the instrument is in another mode, the change to update mode. A failed
/// change is reported as 300. The state is left for updating when the instrument is in update mode and an
/// update is requested.
class AwaitUpdateActionState : public State
{
public:
    AwaitUpdateActionState(StateMachineContext* context, State* parentState);

    void OnRunning() override;

private:
    void EnterUpdateMode();
};

} // namespace Vesmar
