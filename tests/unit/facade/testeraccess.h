#pragma once

#include <memory>

#include <Vesmar/tester.h>

#include "context/statemachinecontext.h"
#include "machine/statemachine.h"

/// The way from a tester to its engine, which the interface hides from applications. The language lets an
/// explicit instantiation name a private member.
namespace TesterAccess
{

Vesmar::StateMachine& MachineOf(Vesmar::Tester& tester);

template <std::unique_ptr<Vesmar::StateMachine> Vesmar::Tester::*Member>
struct Opening {
    friend Vesmar::StateMachine& MachineOf(Vesmar::Tester& tester) { return *(tester.*Member); }
};

template struct Opening<&Vesmar::Tester::_stateMachine>;

inline Vesmar::StateMachineContext& ContextOf(Vesmar::Tester& tester)
{
    return *MachineOf(tester).GetContext();
}

} // namespace TesterAccess
