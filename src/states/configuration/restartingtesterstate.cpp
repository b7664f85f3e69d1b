#include "states/configuration/restartingtesterstate.h"

#include <QThread>

#include "context/statemachinecontext.h"
#include "protocol/classification.h"

namespace Vesmar
{

namespace
{

constexpr unsigned long RestartPauseMs = 2000;

} // namespace

RestartingTesterState::RestartingTesterState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr, "RESTARTING TESTER STATE ")
{
}

void RestartingTesterState::OnRunning()
{
    ChangeTesterMode(OperationMode::Normal);
    GetContext()->RestartRequested.Set(false);
    QThread::msleep(RestartPauseMs);
    GetContext()->CommunicationError.Set(false);
    if (!IsWorkingMode(GetContext()->TesterMode.Get())) {
        // Only a status tells the new mode. Without it the machine would restart the instrument for ever.
        // When it fails after the pause, the link is lost, and link recovery has to begin.
        RequestStatus();
    }
}

} // namespace Vesmar
