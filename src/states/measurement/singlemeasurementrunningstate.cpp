#include "states/measurement/singlemeasurementrunningstate.h"

#include "context/statemachinecontext.h"

namespace Vesmar
{

SingleMeasurementRunningState::SingleMeasurementRunningState(StateMachineContext* context, State* parentState)
    : MeasurementRunningState(context, parentState, nullptr, "SINGLE MEASUREMENT STATE ")
{
}

void SingleMeasurementRunningState::OnEntry()
{
    State::OnEntry();
    GetContext()->MeasurementStatus.Set(MeasurementState::Running);
}

void SingleMeasurementRunningState::OnRunning()
{
    if (!RequestStatus()) {
        return;
    }
    if (GetContext()->NewMeasurement.Get()) {
        ReadResults();
        GetContext()->MeasurementStatus.Set(MeasurementState::Measuring);
    } else {
        FailIfEndedWithoutResult();
    }
}

} // namespace Vesmar
