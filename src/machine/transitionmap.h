#pragma once

#include <array>

#include "machine/statetree.h"
#include "machine/transitions.h"

namespace Vesmar
{

/// Where the runner searches for a transition: external ones on every level from the current state up to the
/// top of the tree, internal ones after them and in the current state alone.
enum class TransitionKind { External, Internal };

/// One row of the transition map.
struct Transition {
    StateId from;
    Guard guard;
    const char* guardName;
    StateId to;
    TransitionKind kind;
};

// The guard and its name are one word in a row, so that they cannot differ.
#define EXTERNAL(from, guard, to) TRANSITION(from, guard, to, External)
#define INTERNAL(from, guard, to) TRANSITION(from, guard, to, Internal)
#define TRANSITION(from, guard, to, kind)                                                                    \
    Transition({StateId::from, &Transitions::guard, #guard, StateId::to, TransitionKind::kind})

/// Every transition of the machine. Among the rows of one state the first whose guard holds wins, so their
/// order decides.
constexpr std::array<Transition, 39> TransitionMap = {{
    EXTERNAL(TesterOperations, TesterOperationsToCommunicationRecoveryTransition, CommunicationRecovery),
    EXTERNAL(TesterOperations, TesterOperationsToRestartingTesterTransition, RestartingTester),
    INTERNAL(TesterOperations, TesterOperationsToInitializationTransition, Initialization),
    EXTERNAL(RestartingTester, RestartingTesterToTesterOperationsTransition, TesterOperations),
    EXTERNAL(CommunicationRecovery, CommunicationRecoveryToTesterOperationsTransition, TesterOperations),
    EXTERNAL(Initialization, InitializationToAwaitUpdateActionTransition, AwaitUpdateAction),
    EXTERNAL(Initialization, InitializationToMonitoringTransition, Monitoring),
    EXTERNAL(Monitoring, MonitoringToAwaitUpdateActionTransition, AwaitUpdateAction),
    EXTERNAL(Monitoring, MonitoringToTesterConfigurationTransition, TesterConfiguration),
    EXTERNAL(Monitoring, MonitoringToRCDMeasurementModeTransition, RCDMeasurementMode),
    EXTERNAL(Monitoring, MonitoringToMeasurementModeTransition, MeasurementMode),
    EXTERNAL(TesterConfiguration, TesterConfigurationToMonitoringTransition, Monitoring),
    EXTERNAL(AwaitUpdateAction, AwaitUpdateActionToUpdatingTransition, Updating),
    EXTERNAL(Updating, UpdatingToAwaitUpdateActionTransition, AwaitUpdateAction),
    EXTERNAL(Updating, UpdatingToInitializationTransition, Initialization),
    EXTERNAL(MeasurementMode, MeasurementModeToAbortingMeasurementTransition, AbortingMeasurement),
    EXTERNAL(MeasurementMode, MeasurementModeToMonitoringTransition, Monitoring),
    INTERNAL(MeasurementMode, MeasurementModeToPreparingMeasurementTransition, PreparingMeasurement),
    EXTERNAL(AbortingMeasurement, AbortingMeasurementToMeasurementModeTransition, MeasurementMode),
    EXTERNAL(PreparingMeasurement, PreparingMeasurementToRCDMeasurementModeTransition, RCDMeasurementMode),
    EXTERNAL(PreparingMeasurement, PreparingMeasurementToStartingMeasurementTransition, StartingMeasurement),
    EXTERNAL(StartingMeasurement, StartingMeasurementToSingleMeasurementRunningTransition,
             SingleMeasurementRunning),
    EXTERNAL(StartingMeasurement, StartingMeasurementToHVTestContinuousMeasurementRunningTransition,
             HVTestContinuousMeasurementRunning),
    EXTERNAL(StartingMeasurement, StartingMeasurementToContinuousMeasurementRunningTransition,
             ContinuousMeasurementRunning),
    EXTERNAL(SingleMeasurementRunning, SingleMeasurementRunningToStoppingMeasurementTransition,
             StoppingMeasurement),
    EXTERNAL(ContinuousMeasurementRunning, ContinuousMeasurementRunningToStoppingMeasurementTransition,
             StoppingMeasurement),
    EXTERNAL(HVTestContinuousMeasurementRunning, ContinuousMeasurementRunningToStoppingMeasurementTransition,
             StoppingMeasurement),
    EXTERNAL(StoppingMeasurement, StoppingMeasurementToMeasurementModeTransition, MeasurementMode),
    EXTERNAL(RCDMeasurementMode, RCDMeasurementModeToMeasurementModeTransition, MeasurementMode),
    EXTERNAL(RCDMeasurementMode, RCDMeasurementModeToMonitoringTransition, Monitoring),
    INTERNAL(RCDMeasurementMode, RCDMeasurementModeToRCDMonitoringTransition, RCDMonitoring),
    EXTERNAL(RCDMonitoring, RCDMonitoringToRCDUbReMeasurementRunningTransition, RCDUbReMeasurementRunning),
    EXTERNAL(RCDMonitoring, RCDMonitoringToRCDIaTaMeasurementRunningTransition, RCDIaTaMeasurementRunning),
    EXTERNAL(RCDMonitoring, RCDMonitoringToRCDIECIaTaMeasurementRunningTransition,
             RCDIECIaTaMeasurementRunning),
    EXTERNAL(RCDMonitoring, RCDMonitoringToRCDIECCleanUpTransition, RCDIECCleanUp),
    EXTERNAL(RCDUbReMeasurementRunning, RCDUbReMeasurementRunningToRCDMonitoringTransition, RCDMonitoring),
    EXTERNAL(RCDIaTaMeasurementRunning, RCDIaTaMeasurementRunningToRCDMonitoringTransition, RCDMonitoring),
    EXTERNAL(RCDIECIaTaMeasurementRunning, RCDIECIaTaMeasurementRunningToRCDMonitoringTransition,
             RCDMonitoring),
    EXTERNAL(RCDIECCleanUp, RCDIECCleanUpToRCDMonitoringTransition, RCDMonitoring),
}};

#undef EXTERNAL
#undef INTERNAL
#undef TRANSITION

} // namespace Vesmar
