#include "states/connection/testeroperationsstate.h"

namespace Vesmar
{

TesterOperationsState::TesterOperationsState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr)
{
}

void TesterOperationsState::OnEntry()
{
    TraceBanner("ENTERING TESTER OPERATIONS STATE");
}

void TesterOperationsState::OnExit()
{
    TraceBanner("LEAVING TESTER OPERATIONS STATE");
}

} // namespace Vesmar
