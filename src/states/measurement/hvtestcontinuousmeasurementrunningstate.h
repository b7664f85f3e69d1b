#pragma once

#include "states/measurement/measurementrunningstate.h"

namespace Vesmar
{

/// Polls the high-voltage test: a continuous function whose time begins after the voltage has risen.
///
/// Starts the measurement timer with the settings' time and time offset. In all else it is like the
/// continuous state.
class HVTestContinuousMeasurementRunningState : public MeasurementRunningState
{
public:
    HVTestContinuousMeasurementRunningState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;
};

} // namespace Vesmar
