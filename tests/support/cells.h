#pragma once

#include "context/statemachinecontext.h"

/// Calls `visit(name, cell)` for each of the 29 cells of a context, in the order in which it declares them.
template <typename Visitor>
void ForEachCell(Vesmar::StateMachineContext& context, const Visitor& visit)
{
    visit("DeviceInformation", context.DeviceInformation);
    visit("CurrentDateTime", context.CurrentDateTime);
    visit("CalibrationDateTime", context.CalibrationDateTime);
    visit("MeasurementTime", context.MeasurementTime);
    visit("NewMeasurement", context.NewMeasurement);
    visit("TesterMode", context.TesterMode);
    visit("CurrentMeasurementType", context.CurrentMeasurementType);
    visit("StartTestStatus", context.StartTestStatus);
    visit("MeasurementFunctionStatus", context.MeasurementFunctionStatus);
    visit("ErrorCode", context.ErrorCode);
    visit("TestResults", context.TestResults);
    visit("TestSettings", context.TestSettings);
    visit("CommunicationError", context.CommunicationError);
    visit("RestartRequested", context.RestartRequested);
    visit("PrepareMeasurementRequested", context.PrepareMeasurementRequested);
    visit("StartMeasurementRequested", context.StartMeasurementRequested);
    visit("AbortMeasurementRequested", context.AbortMeasurementRequested);
    visit("MeasurementTimeElapsed", context.MeasurementTimeElapsed);
    visit("UpdateRequested", context.UpdateRequested);
    visit("IsMeasurementModeActive", context.IsMeasurementModeActive);
    visit("IsMeasurementRunning", context.IsMeasurementRunning);
    visit("CurrentDateTimeRequested", context.CurrentDateTimeRequested);
    visit("CurrentDateTimeConfigurationRequested", context.CurrentDateTimeConfigurationRequested);
    visit("CalibrationDateTimeRequested", context.CalibrationDateTimeRequested);
    visit("CalibrationDateTimeConfigurationRequested", context.CalibrationDateTimeConfigurationRequested);
    visit("DeviceInformationRequested", context.DeviceInformationRequested);
    visit("OperationProgress", context.OperationProgress);
    visit("OperationStatus", context.OperationStatus);
    visit("MeasurementStatus", context.MeasurementStatus);
}
