#include "states/update/awaitupdateactionstate.h"

#include <QThread>

#include "context/statemachinecontext.h"
#include "link/trace.h"

namespace Vesmar
{

namespace
{

constexpr unsigned long ModeChangePauseMs = 2000;

} // namespace

AwaitUpdateActionState::AwaitUpdateActionState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr, "AWAIT UPDATE ACTION STATE ")
{
}

void AwaitUpdateActionState::OnRunning()
{
    if (!RequestStatus()) {
        return;
    }
    if (GetContext()->TesterMode.Get() == OperationMode::Update) {
        Trace::WriteIn(Trace::Colour::Red, "Tester is in update mode.");
        return;
    }
    EnterUpdateMode();
}

void AwaitUpdateActionState::EnterUpdateMode()
{
    if (!ChangeTesterMode(OperationMode::Update)) {
        GetContext()->ErrorCode.Set(Error::UpdateModeChangeFailed);
        Trace::WriteIn(Trace::Colour::Red, "UPDATE ERROR - Tester mode could not be changed.");
        return;
    }
    Trace::WriteIn(Trace::Colour::Red, "Change tester mode to update.");
    QThread::msleep(ModeChangePauseMs);
}

} // namespace Vesmar
