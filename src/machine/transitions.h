#pragma once

namespace Vesmar
{

class StateMachineContext;

/// Decides from the context whether the machine makes a transition.
using Guard = bool (*)(StateMachineContext& context);

/// The guards of the transition map, grouped by the state that they leave.
///
/// They are called on the worker's thread, in every step and for every state on the path to the top of the
/// tree, and decide from the context alone. All but three only read it: the guards that end an aborted RCD
/// measurement leave an error code behind. `TestSettings` and `TestResults` must hold objects.
namespace Transitions
{

bool TesterOperationsToCommunicationRecoveryTransition(StateMachineContext& context);
bool TesterOperationsToRestartingTesterTransition(StateMachineContext& context);
bool TesterOperationsToInitializationTransition(StateMachineContext& context);

bool RestartingTesterToTesterOperationsTransition(StateMachineContext& context);

bool CommunicationRecoveryToTesterOperationsTransition(StateMachineContext& context);

bool InitializationToAwaitUpdateActionTransition(StateMachineContext& context);
bool InitializationToMonitoringTransition(StateMachineContext& context);

bool MonitoringToAwaitUpdateActionTransition(StateMachineContext& context);
bool MonitoringToTesterConfigurationTransition(StateMachineContext& context);
bool MonitoringToRCDMeasurementModeTransition(StateMachineContext& context);
bool MonitoringToMeasurementModeTransition(StateMachineContext& context);

bool TesterConfigurationToMonitoringTransition(StateMachineContext& context);

bool AwaitUpdateActionToUpdatingTransition(StateMachineContext& context);

bool UpdatingToAwaitUpdateActionTransition(StateMachineContext& context);
bool UpdatingToInitializationTransition(StateMachineContext& context);

bool MeasurementModeToAbortingMeasurementTransition(StateMachineContext& context);
bool MeasurementModeToMonitoringTransition(StateMachineContext& context);
bool MeasurementModeToPreparingMeasurementTransition(StateMachineContext& context);

bool AbortingMeasurementToMeasurementModeTransition(StateMachineContext& context);

bool PreparingMeasurementToRCDMeasurementModeTransition(StateMachineContext& context);
bool PreparingMeasurementToStartingMeasurementTransition(StateMachineContext& context);

bool StartingMeasurementToSingleMeasurementRunningTransition(StateMachineContext& context);
bool StartingMeasurementToHVTestContinuousMeasurementRunningTransition(StateMachineContext& context);
bool StartingMeasurementToContinuousMeasurementRunningTransition(StateMachineContext& context);

bool SingleMeasurementRunningToStoppingMeasurementTransition(StateMachineContext& context);

bool ContinuousMeasurementRunningToStoppingMeasurementTransition(StateMachineContext& context);

bool StoppingMeasurementToMeasurementModeTransition(StateMachineContext& context);

bool RCDMeasurementModeToMonitoringTransition(StateMachineContext& context);
bool RCDMeasurementModeToMeasurementModeTransition(StateMachineContext& context);
bool RCDMeasurementModeToRCDMonitoringTransition(StateMachineContext& context);

bool RCDMonitoringToRCDUbReMeasurementRunningTransition(StateMachineContext& context);
bool RCDMonitoringToRCDIaTaMeasurementRunningTransition(StateMachineContext& context);
bool RCDMonitoringToRCDIECIaTaMeasurementRunningTransition(StateMachineContext& context);
bool RCDMonitoringToRCDIECCleanUpTransition(StateMachineContext& context);

bool RCDUbReMeasurementRunningToRCDMonitoringTransition(StateMachineContext& context);

bool RCDIaTaMeasurementRunningToRCDMonitoringTransition(StateMachineContext& context);

bool RCDIECIaTaMeasurementRunningToRCDMonitoringTransition(StateMachineContext& context);

bool RCDIECCleanUpToRCDMonitoringTransition(StateMachineContext& context);

} // namespace Transitions

} // namespace Vesmar
