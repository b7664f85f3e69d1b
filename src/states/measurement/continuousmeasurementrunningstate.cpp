#include "states/measurement/continuousmeasurementrunningstate.h"

#include "context/statemachinecontext.h"

namespace Vesmar
{

ContinuousMeasurementRunningState::ContinuousMeasurementRunningState(StateMachineContext* context,
                                                                     State* parentState)
    : MeasurementRunningState(context, parentState, nullptr, "CONTINUOUS MEASUREMENT STATE ")
{
}

void ContinuousMeasurementRunningState::OnEntry()
{
    State::OnEntry();
    GetContext()->MeasurementStatus.Set(MeasurementState::Measuring);
    GetContext()->StartMeasurementTimer(GetMeasurementTime());
}

void ContinuousMeasurementRunningState::OnRunning()
{
    PollContinuousMeasurement();
}

} // namespace Vesmar
