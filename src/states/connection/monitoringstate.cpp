#include "states/connection/monitoringstate.h"

#include "context/statemachinecontext.h"

namespace Vesmar
{

MonitoringState::MonitoringState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr, "MONITORING STATE ")
{
}

void MonitoringState::OnRunning()
{
    if (!RequestStatus()) {
        return;
    }
    if (GetContext()->CurrentMeasurementType.Get() != MeasurementType::Monitoring) {
        StopMeasurement();
        return;
    }
    // A link that was lost, a restart, or measurement mode left in the middle may have left these two behind.
    GetContext()->IsMeasurementRunning.Set(false);
    GetContext()->StopMeasurementTimerIfRunning();
    if (GetContext()->NewMeasurement.Get()) {
        RequestMeasurementResults(MeasurementType::Monitoring);
    }
}

} // namespace Vesmar
