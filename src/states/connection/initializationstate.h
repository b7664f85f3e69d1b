#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Reads who the instrument is and what time it has, once after every start or recovery of the link.
///
/// Sends status and version, and in the normal mode both dates. Clears every measurement request and
/// `IsMeasurementModeActive` on entry. One step, then monitoring, or the update states when an update is due.
class InitializationState : public State
{
public:
    InitializationState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;
};

} // namespace Vesmar
