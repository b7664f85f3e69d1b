#include "states/measurement/continuousmeasurementrunningstate.h"

#include "context/statemachinecontext.h"

namespace Vesmar
{

ContinuousMeasurementRunningState::ContinuousMeasurementRunningState(StateMachineContext* context,
                                                                     State* parentState)
    : MeasurementRunningState(context, parentState, nullptr)
{
}

void ContinuousMeasurementRunningState::OnEntry()
{
    TraceBanner("ENTERING CONTINUOUS MEASUREMENT STATE ");
    GetContext()->MeasurementStatus.Set(MeasurementState::Measuring);
    GetContext()->StartMeasurementTimer(GetMeasurementTime());
}

void ContinuousMeasurementRunningState::OnExit()
{
    TraceBanner("LEAVING CONTINUOUS MEASUREMENT STATE ");
}

void ContinuousMeasurementRunningState::OnRunning()
{
    FollowContinuousMeasurement();
}

} // namespace Vesmar
