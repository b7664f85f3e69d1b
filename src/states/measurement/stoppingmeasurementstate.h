#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Ends a finished measurement on the instrument.
///
/// Sends status on every step, and stop while the function still runs. Stops the measurement timer and sets
/// `MeasurementStatus` to `Stopping` on entry. When the instrument reports the function over, sets
/// `MeasurementStatus` to `Stopped` and clears `IsMeasurementRunning`. Left for measurement mode then.
class StoppingMeasurementState : public State
{
public:
    StoppingMeasurementState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;
};

} // namespace Vesmar
