#pragma once

#include "states/state.h"

namespace Vesmar
{

/// The idle state: it polls the status and reads the mains readings that the instrument measures while idle.
///
/// Sends status on every step. After it, sends stop as long as the instrument runs a function, which nobody
/// here started. When it runs none, clears `IsMeasurementRunning`, stops the measurement timer, and reads the
/// readings when there are new ones. Left for configuration, for the update states, and for measurement mode.
class MonitoringState : public State
{
public:
    MonitoringState(StateMachineContext* context, State* parentState);

    void OnRunning() override;
};

} // namespace Vesmar
