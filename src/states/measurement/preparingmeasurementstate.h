#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Hands the settings to the instrument and waits until it reports the function prepared.
///
/// Sends status on every step, and prepare once for each request; settings of an RCD test it leaves to RCD
/// measurement mode. Clears `PrepareMeasurementRequested` when the instrument has acknowledged. Sets
/// `MeasurementStatus` to `Preparing` and then `Prepared`, `MeasurementTime` to 0. Reports 200 and asks for
/// an abort when the instrument refuses the function. Left for starting when the function is prepared and a
/// start is asked for.
class PreparingMeasurementState : public State
{
public:
    PreparingMeasurementState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;

private:
    void Prepare();
    void FollowPreparation();
};

} // namespace Vesmar
