#pragma once

#include "states/state.h"

namespace Vesmar
{

/// The root of all states in which the link is good.
///
/// Sends nothing. Left at once for initialization. From here and from every state below it, the machine
/// leaves for link recovery when `CommunicationError` is raised, and for a restart when one is requested or
/// the instrument is in a mode that the library does not work in.
class TesterOperationsState : public State
{
public:
    TesterOperationsState(StateMachineContext* context, State* parentState);
};

} // namespace Vesmar
