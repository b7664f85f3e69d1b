#include "states/connection/initializationstate.h"

#include <QThread>

#include "context/statemachinecontext.h"

namespace Vesmar
{

namespace
{

constexpr unsigned long PauseBetweenDatesMs = 100;

} // namespace

InitializationState::InitializationState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr)
{
}

void InitializationState::OnEntry()
{
    TraceBanner("ENTERING INITIALIZATION STATE");
    ClearMeasurementRequests();
}

void InitializationState::OnExit()
{
    TraceBanner("LEAVING INITIALIZATION STATE");
}

void InitializationState::OnRunning()
{
    if (!RequestStatus() || !RequestVersion()) {
        return;
    }
    if (GetContext()->TesterMode.Get() != OperationMode::Normal) {
        return;
    }
    if (!RequestCurrentDateTime()) {
        return;
    }
    QThread::msleep(PauseBetweenDatesMs);
    RequestCalibrationDateTime();
}

} // namespace Vesmar
