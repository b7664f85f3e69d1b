#pragma once

#include <array>
#include <memory>
#include <optional>

namespace Vesmar
{

class State;
class StateMachineContext;

/// The states in the order in which they are created. Each is the class of this name with `State` behind it.
enum class StateId {
    TesterOperations,
    AwaitUpdateAction,
    CommunicationRecovery,
    Updating,
    Initialization,
    RestartingTester,
    Monitoring,
    TesterConfiguration,
    MeasurementMode,
    PreparingMeasurement,
    StartingMeasurement,
    SingleMeasurementRunning,
    ContinuousMeasurementRunning,
    StoppingMeasurement,
    AbortingMeasurement,
    HVTestContinuousMeasurementRunning,
    RCDMeasurementMode,
    RCDMonitoring,
    RCDUbReMeasurementRunning,
    RCDIaTaMeasurementRunning,
    RCDIECIaTaMeasurementRunning,
    RCDIECCleanUp,
};

/// Where the machine starts.
constexpr StateId InitialState = StateId::TesterOperations;

/// One state of the tree: its class, by name and as what creates it, and the state that encloses it, which
/// stands before it. A state without a parent is at the top.
struct StateNode {
    const char* name;
    std::unique_ptr<State> (*create)(StateMachineContext* context, State* parentState);
    std::optional<StateId> parent;
};

/// Every state of the machine, in the order of `StateId`.
extern const std::array<StateNode, 22> StateTree;

/// The row of a state.
inline const StateNode& NodeOf(StateId state)
{
    return StateTree.at(static_cast<std::size_t>(state));
}

} // namespace Vesmar
