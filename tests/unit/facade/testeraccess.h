#pragma once

#include <memory>

#include <Vesmar/tester.h>

#include "context/statemachinecontext.h"
#include "machine/statemachine.h"

/// The way from a tester to its engine, which its interface hides from applications: an explicit
/// instantiation may name a private member.
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
