#pragma once

#include <vector>

#include <QString>

#include "machine/statemachinerunner.h"
#include "machine/transitions.h"

/// A guard and the name that it goes by.
struct NamedGuard {
    const char* name;
    Vesmar::Guard guard;
};

/// Every guard once.
inline const std::vector<NamedGuard>& GuardTable()
{
    namespace Guards = Vesmar::Transitions;
    static const std::vector<NamedGuard> table = {
        {"TesterOperationsToCommunicationRecoveryTransition",
         &Guards::TesterOperationsToCommunicationRecoveryTransition},
        {"TesterOperationsToRestartingTesterTransition",
         &Guards::TesterOperationsToRestartingTesterTransition},
        {"TesterOperationsToInitializationTransition", &Guards::TesterOperationsToInitializationTransition},
        {"RestartingTesterToTesterOperationsTransition",
         &Guards::RestartingTesterToTesterOperationsTransition},
        {"CommunicationRecoveryToTesterOperationsTransition",
         &Guards::CommunicationRecoveryToTesterOperationsTransition},
        {"InitializationToAwaitUpdateActionTransition", &Guards::InitializationToAwaitUpdateActionTransition},
        {"InitializationToMonitoringTransition", &Guards::InitializationToMonitoringTransition},
        {"MonitoringToAwaitUpdateActionTransition", &Guards::MonitoringToAwaitUpdateActionTransition},
        {"MonitoringToTesterConfigurationTransition", &Guards::MonitoringToTesterConfigurationTransition},
        {"MonitoringToRCDMeasurementModeTransition", &Guards::MonitoringToRCDMeasurementModeTransition},
        {"MonitoringToMeasurementModeTransition", &Guards::MonitoringToMeasurementModeTransition},
        {"TesterConfigurationToMonitoringTransition", &Guards::TesterConfigurationToMonitoringTransition},
        {"AwaitUpdateActionToUpdatingTransition", &Guards::AwaitUpdateActionToUpdatingTransition},
        {"UpdatingToAwaitUpdateActionTransition", &Guards::UpdatingToAwaitUpdateActionTransition},
        {"UpdatingToInitializationTransition", &Guards::UpdatingToInitializationTransition},
        {"MeasurementModeToAbortingMeasurementTransition",
         &Guards::MeasurementModeToAbortingMeasurementTransition},
        {"MeasurementModeToMonitoringTransition", &Guards::MeasurementModeToMonitoringTransition},
        {"MeasurementModeToPreparingMeasurementTransition",
         &Guards::MeasurementModeToPreparingMeasurementTransition},
        {"AbortingMeasurementToMeasurementModeTransition",
         &Guards::AbortingMeasurementToMeasurementModeTransition},
        {"PreparingMeasurementToRCDMeasurementModeTransition",
         &Guards::PreparingMeasurementToRCDMeasurementModeTransition},
        {"PreparingMeasurementToStartingMeasurementTransition",
         &Guards::PreparingMeasurementToStartingMeasurementTransition},
        {"StartingMeasurementToSingleMeasurementRunningTransition",
         &Guards::StartingMeasurementToSingleMeasurementRunningTransition},
        {"StartingMeasurementToHVTestContinuousMeasurementRunningTransition",
         &Guards::StartingMeasurementToHVTestContinuousMeasurementRunningTransition},
        {"StartingMeasurementToContinuousMeasurementRunningTransition",
         &Guards::StartingMeasurementToContinuousMeasurementRunningTransition},
        {"SingleMeasurementRunningToStoppingMeasurementTransition",
         &Guards::SingleMeasurementRunningToStoppingMeasurementTransition},
        {"ContinuousMeasurementRunningToStoppingMeasurementTransition",
         &Guards::ContinuousMeasurementRunningToStoppingMeasurementTransition},
        {"StoppingMeasurementToMeasurementModeTransition",
         &Guards::StoppingMeasurementToMeasurementModeTransition},
        {"RCDMeasurementModeToMonitoringTransition", &Guards::RCDMeasurementModeToMonitoringTransition},
        {"RCDMeasurementModeToMeasurementModeTransition",
         &Guards::RCDMeasurementModeToMeasurementModeTransition},
        {"RCDMeasurementModeToRCDMonitoringTransition", &Guards::RCDMeasurementModeToRCDMonitoringTransition},
        {"RCDMonitoringToRCDUbReMeasurementRunningTransition",
         &Guards::RCDMonitoringToRCDUbReMeasurementRunningTransition},
        {"RCDMonitoringToRCDIaTaMeasurementRunningTransition",
         &Guards::RCDMonitoringToRCDIaTaMeasurementRunningTransition},
        {"RCDMonitoringToRCDIECIaTaMeasurementRunningTransition",
         &Guards::RCDMonitoringToRCDIECIaTaMeasurementRunningTransition},
        {"RCDMonitoringToRCDIECCleanUpTransition", &Guards::RCDMonitoringToRCDIECCleanUpTransition},
        {"RCDUbReMeasurementRunningToRCDMonitoringTransition",
         &Guards::RCDUbReMeasurementRunningToRCDMonitoringTransition},
        {"RCDIaTaMeasurementRunningToRCDMonitoringTransition",
         &Guards::RCDIaTaMeasurementRunningToRCDMonitoringTransition},
        {"RCDIECIaTaMeasurementRunningToRCDMonitoringTransition",
         &Guards::RCDIECIaTaMeasurementRunningToRCDMonitoringTransition},
        {"RCDIECCleanUpToRCDMonitoringTransition", &Guards::RCDIECCleanUpToRCDMonitoringTransition},
    };
    return table;
}

/// The guard's name; empty for a function that is none of the guards.
inline QString NameOfGuard(Vesmar::Guard guard)
{
    for (const NamedGuard& row : GuardTable()) {
        if (row.guard == guard) {
            return QLatin1String(row.name);
        }
    }
    return {};
}
