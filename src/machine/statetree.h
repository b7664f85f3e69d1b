#pragma once

#include <array>
#include <memory>
#include <optional>

namespace Vesmar
{

class State;
class StateMachineContext;

/// The states in the order in which they are created. Each enumerator stands for the class of the same name
/// with `State` at its end.
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

/// The state in which the machine starts.
constexpr StateId InitialState = StateId::TesterOperations;

/// One state of the tree. Its parent is the state that encloses it, which is created before it; a state
/// without a parent is at the top.
struct StateNode {
    const char* name; ///< The name of the class.
    std::unique_ptr<State> (*create)(StateMachineContext* context, State* parentState);
    std::optional<StateId> parent;
};

/// Every state of the machine, in the order of `StateId`.
extern const std::array<StateNode, 22> StateTree;

} // namespace Vesmar
