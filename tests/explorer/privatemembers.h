#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include <Vesmar/tester.h>

#include "machine/statemachinerunner.h"
#include "states/connection/communicationrecoverystate.h"
#include "states/rcd/rcdstate.h"

/// The members that a configuration has to be written back to, and that the driver hides. The language lets
/// an explicit instantiation name a private member.
namespace PrivateMembers
{

Vesmar::State*& CurrentState(Vesmar::StateMachineRunner& runner);
std::atomic<bool>& IsEntryPending(Vesmar::StateMachineRunner& runner);
std::vector<std::unique_ptr<Vesmar::State>>& States(Vesmar::StateMachineRunner& runner);
bool& IsEnabled(Vesmar::Tester& tester);
unsigned& Attempts(Vesmar::CommunicationRecoveryState& state);
/// Lets an RCD test try everything twice at the most, which shows the same as nine times.
void ShortenBudgets(Vesmar::RCDState& state);

template <auto Current, auto Pending, auto AllStates, auto Enabled, auto Count>
struct Opening {
    friend Vesmar::State*& CurrentState(Vesmar::StateMachineRunner& runner) { return runner.*Current; }
    friend std::atomic<bool>& IsEntryPending(Vesmar::StateMachineRunner& runner) { return runner.*Pending; }
    friend std::vector<std::unique_ptr<Vesmar::State>>& States(Vesmar::StateMachineRunner& runner)
    {
        return runner.*AllStates;
    }
    friend bool& IsEnabled(Vesmar::Tester& tester) { return tester.*Enabled; }
    friend unsigned& Attempts(Vesmar::CommunicationRecoveryState& state) { return state.*Count; }
};

template struct Opening<&Vesmar::StateMachineRunner::_currentState,
                        &Vesmar::StateMachineRunner::_entryPending, &Vesmar::StateMachineRunner::_states,
                        &Vesmar::Tester::_enabled, &Vesmar::CommunicationRecoveryState::_attempts>;

template <auto... Budgets>
struct OpeningOfBudgets {
    friend void ShortenBudgets(Vesmar::RCDState& state) { ((state.*Budgets = 2), ...); }
};

template struct OpeningOfBudgets<&Vesmar::RCDState::_maxStatusAttempts,
                                 &Vesmar::RCDState::_maxPrepareAttempts, &Vesmar::RCDState::_lsaap,
                                 &Vesmar::RCDState::_maxStartAttempts>;

} // namespace PrivateMembers
