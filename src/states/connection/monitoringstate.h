#pragma once

#include "states/state.h"

namespace Vesmar
{

/// The idle state: polls the status and fetches the mains readings that the instrument takes while idle.
///
/// Sends status on every step, then either stop, on and on while the instrument runs a function that nobody
/// here started, or a read of the readings when there are new ones. Left for configuration, for the update
/// states, and for measurement mode.
class MonitoringState : public State
{
public:
    MonitoringState(StateMachineContext* context, State* parentState);

    void OnRunning() override;
};

} // namespace Vesmar
