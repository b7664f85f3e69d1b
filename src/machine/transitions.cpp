#include "machine/transitions.h"

#include "context/statemachinecontext.h"
#include "model/settings/rcdmode.h"
#include "protocol/classification.h"

namespace Vesmar::Transitions
{

namespace
{

using RCDMode = RCDSettings::RCDMode;
using RCDIECMode = RCDIECSettings::RCDIECMode;

const MeasurementSettings& Settings(StateMachineContext& context)
{
    return *context.TestSettings.Get();
}

MeasurementType SettingsType(StateMachineContext& context)
{
    return Settings(context).GetMeasurementType();
}

bool IsUpdateDue(StateMachineContext& context)
{
    return context.UpdateRequested.Get() || context.TesterMode.Get() == OperationMode::Update;
}

bool HasMeasurementStatus(StateMachineContext& context, MeasurementState status)
{
    return context.MeasurementStatus.Get() == status;
}

/// An aborted RCD measurement always leaves an error code behind.
bool IsRCDAborted(StateMachineContext& context)
{
    if (!context.AbortMeasurementRequested.Get()) {
        return false;
    }
    if (context.ErrorCode.Get() == Error::NoErrors) {
        context.ErrorCode.Set(Error::RCDDeviceError1);
    }
    return true;
}

bool IsRCDStoppedOrAborted(StateMachineContext& context)
{
    return HasMeasurementStatus(context, MeasurementState::Stopped) || IsRCDAborted(context);
}

} // namespace

bool TesterOperationsToCommunicationRecoveryTransition(StateMachineContext& context)
{
    return context.CommunicationError.Get();
}

bool TesterOperationsToRestartingTesterTransition(StateMachineContext& context)
{
    return context.RestartRequested.Get() || !IsWorkingMode(context.TesterMode.Get());
}

bool TesterOperationsToInitializationTransition(StateMachineContext& /*context*/)
{
    return true;
}

bool RestartingTesterToTesterOperationsTransition(StateMachineContext& /*context*/)
{
    return true;
}

bool CommunicationRecoveryToTesterOperationsTransition(StateMachineContext& context)
{
    return !context.CommunicationError.Get();
}

bool InitializationToAwaitUpdateActionTransition(StateMachineContext& context)
{
    return IsUpdateDue(context);
}

bool InitializationToMonitoringTransition(StateMachineContext& /*context*/)
{
    return true;
}

bool MonitoringToAwaitUpdateActionTransition(StateMachineContext& context)
{
    return IsUpdateDue(context);
}

bool MonitoringToTesterConfigurationTransition(StateMachineContext& context)
{
    return context.DeviceInformationRequested.Get() || context.CurrentDateTimeRequested.Get() ||
           context.CalibrationDateTimeRequested.Get() ||
           context.CurrentDateTimeConfigurationRequested.Get() ||
           context.CalibrationDateTimeConfigurationRequested.Get();
}

bool MonitoringToRCDMeasurementModeTransition(StateMachineContext& context)
{
    return IsRCD(SettingsType(context)) && context.IsMeasurementModeActive.Get();
}

bool MonitoringToMeasurementModeTransition(StateMachineContext& context)
{
    return !IsRCD(SettingsType(context)) && context.IsMeasurementModeActive.Get();
}

bool TesterConfigurationToMonitoringTransition(StateMachineContext& context)
{
    return !MonitoringToTesterConfigurationTransition(context);
}

bool AwaitUpdateActionToUpdatingTransition(StateMachineContext& context)
{
    return context.UpdateRequested.Get() && context.TesterMode.Get() == OperationMode::Update;
}

bool UpdatingToAwaitUpdateActionTransition(StateMachineContext& context)
{
    return context.TesterMode.Get() == OperationMode::Update;
}

bool UpdatingToInitializationTransition(StateMachineContext& context)
{
    return context.TesterMode.Get() == OperationMode::Normal;
}

bool MeasurementModeToAbortingMeasurementTransition(StateMachineContext& context)
{
    return context.AbortMeasurementRequested.Get() &&
           !HasMeasurementStatus(context, MeasurementState::Prepared);
}

bool MeasurementModeToMonitoringTransition(StateMachineContext& context)
{
    return !context.IsMeasurementModeActive.Get();
}

bool MeasurementModeToPreparingMeasurementTransition(StateMachineContext& /*context*/)
{
    return true;
}

bool AbortingMeasurementToMeasurementModeTransition(StateMachineContext& context)
{
    return HasMeasurementStatus(context, MeasurementState::Stopped);
}

bool PreparingMeasurementToRCDMeasurementModeTransition(StateMachineContext& context)
{
    // This holds for every function, not for the RCD tests alone: RCD measurement mode sends the others back.
    return context.PrepareMeasurementRequested.Get();
}

bool PreparingMeasurementToStartingMeasurementTransition(StateMachineContext& context)
{
    return context.StartMeasurementRequested.Get() &&
           HasMeasurementStatus(context, MeasurementState::Prepared) &&
           !context.PrepareMeasurementRequested.Get();
}

bool StartingMeasurementToSingleMeasurementRunningTransition(StateMachineContext& context)
{
    return HasMeasurementStatus(context, MeasurementState::Running) && IsSingle(SettingsType(context));
}

bool StartingMeasurementToHVTestContinuousMeasurementRunningTransition(StateMachineContext& context)
{
    return context.CurrentMeasurementType.Get() == MeasurementType::HVTest &&
           HasMeasurementStatus(context, MeasurementState::Running);
}

bool StartingMeasurementToContinuousMeasurementRunningTransition(StateMachineContext& context)
{
    const MeasurementType type = SettingsType(context);
    return HasMeasurementStatus(context, MeasurementState::Running) && type != MeasurementType::HVTest &&
           !IsSingle(type);
}

bool SingleMeasurementRunningToStoppingMeasurementTransition(StateMachineContext& context)
{
    const MeasurementResults* results = context.TestResults.Get();
    const MeasurementType resultsType = results->GetMeasurementType();
    const bool isLineToNeutral = context.CurrentMeasurementType.Get() == MeasurementType::RLN;
    if (isLineToNeutral && resultsType == MeasurementType::RLN) {
        return context.NewMeasurement.Get() && HasMeasurementStatus(context, MeasurementState::Measuring);
    }
    if (isLineToNeutral && resultsType == MeasurementType::IEC) {
        constexpr float NoResultYet = 0.0F;
        return results->_values.front() != NoResultYet &&
               HasMeasurementStatus(context, MeasurementState::Measuring);
    }
    return context.MeasurementFunctionStatus.Get() != FunctionState::Running;
}

bool ContinuousMeasurementRunningToStoppingMeasurementTransition(StateMachineContext& context)
{
    return context.MeasurementTimeElapsed.Get();
}

bool StoppingMeasurementToMeasurementModeTransition(StateMachineContext& context)
{
    return HasMeasurementStatus(context, MeasurementState::Stopped);
}

bool RCDMeasurementModeToMonitoringTransition(StateMachineContext& context)
{
    return !context.IsMeasurementModeActive.Get();
}

bool RCDMeasurementModeToMeasurementModeTransition(StateMachineContext& context)
{
    return context.PrepareMeasurementRequested.Get() && !IsRCD(SettingsType(context));
}

bool RCDMeasurementModeToRCDMonitoringTransition(StateMachineContext& /*context*/)
{
    return true;
}

// The application stores the settings before it requests the start. These four therefore read the request
// before the settings: the other way round, a new start could meet the settings before it.

bool RCDMonitoringToRCDUbReMeasurementRunningTransition(StateMachineContext& context)
{
    return context.StartMeasurementRequested.Get() && ModeOfRCD(Settings(context)) == RCDMode::UbRe;
}

bool RCDMonitoringToRCDIaTaMeasurementRunningTransition(StateMachineContext& context)
{
    if (!context.StartMeasurementRequested.Get()) {
        return false;
    }
    const auto mode = ModeOfRCD(Settings(context));
    return mode == RCDMode::IaTa2 || mode == RCDMode::IaTa1;
}

bool RCDMonitoringToRCDIECIaTaMeasurementRunningTransition(StateMachineContext& context)
{
    if (!context.StartMeasurementRequested.Get()) {
        return false;
    }
    const auto mode = ModeOfRCDIEC(Settings(context));
    return mode == RCDIECMode::IaTa2 || mode == RCDIECMode::IaTa1;
}

bool RCDMonitoringToRCDIECCleanUpTransition(StateMachineContext& context)
{
    return context.StartMeasurementRequested.Get() && ModeOfRCDIEC(Settings(context)) == RCDIECMode::CleanUp;
}

bool RCDUbReMeasurementRunningToRCDMonitoringTransition(StateMachineContext& context)
{
    return IsRCDStoppedOrAborted(context);
}

bool RCDIaTaMeasurementRunningToRCDMonitoringTransition(StateMachineContext& context)
{
    return IsRCDStoppedOrAborted(context);
}

bool RCDIECIaTaMeasurementRunningToRCDMonitoringTransition(StateMachineContext& context)
{
    return IsRCDStoppedOrAborted(context) || ModeOfRCDIEC(Settings(context)) == RCDIECMode::CleanUp;
}

bool RCDIECCleanUpToRCDMonitoringTransition(StateMachineContext& context)
{
    return HasMeasurementStatus(context, MeasurementState::Stopped);
}

} // namespace Vesmar::Transitions
