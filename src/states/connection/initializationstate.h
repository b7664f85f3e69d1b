#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Reads the instrument's identity and dates, once after every start or recovery of the link.
///
/// Sends status and version, and in the normal mode the reads of both dates. Clears every measurement request
/// and `IsMeasurementModeActive` on entry. Left after one step, for the update states when an update is
/// requested or the instrument is in update mode, otherwise for monitoring.
class InitializationState : public State
{
public:
    InitializationState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;
};

} // namespace Vesmar
