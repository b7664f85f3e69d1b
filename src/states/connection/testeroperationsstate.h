#pragma once

#include "states/state.h"

namespace Vesmar
{

/// The root of everything the tester does while the link is good. It only passes on.
///
/// Sends nothing. Left at once for initialization; from here and from everything below it the machine leaves
/// for link recovery when `CommunicationError` is raised, and for a restart when one is asked for or the
/// instrument is in a mode that the library does not work in.
class TesterOperationsState : public State
{
public:
    TesterOperationsState(StateMachineContext* context, State* parentState);
};

} // namespace Vesmar
