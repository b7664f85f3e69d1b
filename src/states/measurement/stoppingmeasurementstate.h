#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Ends a finished measurement on the instrument.
///
/// Sends status on every step, and stop while the function still runs. Stops the measurement timer. Sets
/// `MeasurementStatus` to `Stopping`, then `Stopped`, and clears `IsMeasurementRunning`, when the instrument
/// reports the function over, which leaves the state for measurement mode.
class StoppingMeasurementState : public State
{
public:
    StoppingMeasurementState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;
};

} // namespace Vesmar
