#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Hands the settings to the instrument and waits until it reports the function prepared.
///
/// Sends status on every step, and prepare once for each request, unless the settings are those of an RCD
/// test. Clears `PrepareMeasurementRequested` when the instrument has acknowledged, unless other settings
/// were prepared meanwhile. Sets `MeasurementStatus` to `Preparing` and then `Prepared`, and
/// `MeasurementTime` to 0. Reports 200 and requests an abort when the instrument refuses the function. Left
/// for starting when the function is prepared and a start is requested, and for RCD measurement mode while a
/// request to prepare is pending.
class PreparingMeasurementState : public State
{
public:
    PreparingMeasurementState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;

private:
    void Prepare();
    void WatchPreparation();
};

} // namespace Vesmar
