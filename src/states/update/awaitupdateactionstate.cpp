#include "states/update/awaitupdateactionstate.h"

#include <QDebug>
#include <QThread>

#include "context/statemachinecontext.h"

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
        qWarning("\033[0;31mTester is in update mode.\033[0m");
        return;
    }
    EnterUpdateMode();
}

void AwaitUpdateActionState::EnterUpdateMode()
{
    if (!ChangeTesterMode(OperationMode::Update)) {
        GetContext()->ErrorCode.Set(Error::UpdateModeChangeFailed);
        qWarning("\033[0;31mUPDATE ERROR - Tester mode could not be changed.\033[0m");
        return;
    }
    qWarning("\033[0;31mChange tester mode to update.\033[0m");
    QThread::msleep(ModeChangePauseMs);
}

} // namespace Vesmar
