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
    : State(context, parentState, nullptr, "INITIALIZATION STATE")
{
}

void InitializationState::OnEntry()
{
    State::OnEntry();
    ClearMeasurementRequests();
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
