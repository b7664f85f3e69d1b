#include "states/connection/testeroperationsstate.h"

namespace Vesmar
{

TesterOperationsState::TesterOperationsState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr, "TESTER OPERATIONS STATE")
{
}

} // namespace Vesmar
