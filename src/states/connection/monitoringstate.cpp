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
    if (GetContext()->NewMeasurement.Get()) {
        RequestMeasurementResults(MeasurementType::Monitoring);
    }
}

} // namespace Vesmar
