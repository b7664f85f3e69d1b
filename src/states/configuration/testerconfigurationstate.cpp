#include "states/configuration/testerconfigurationstate.h"

#include <QThread>

#include "context/statemachinecontext.h"

namespace Vesmar
{

namespace
{

constexpr unsigned long CalibrationModePauseMs = 500;
constexpr unsigned long RestartPauseMs = 2000;

} // namespace

TesterConfigurationState::TesterConfigurationState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr, "TESTER CONFIGURATION STATE ")
{
}

void TesterConfigurationState::OnRunning()
{
    // The first one that fails ends the step.
    const bool isServed = ServeDeviceInformation() && ServeCurrentDateTimeConfiguration() &&
                          ServeCalibrationDateTimeConfiguration() && ServeCurrentDateTime();
    if (isServed) {
        ServeCalibrationDateTime();
    }
}

bool TesterConfigurationState::ServeDeviceInformation()
{
    return !GetContext()->DeviceInformationRequested.TestAndClear() || RequestVersion();
}

bool TesterConfigurationState::ServeCurrentDateTimeConfiguration()
{
    return !GetContext()->CurrentDateTimeConfigurationRequested.TestAndClear() ||
           ConfigureCurrentDateTime(GetContext()->CurrentDateTime.Get());
}

bool TesterConfigurationState::ServeCalibrationDateTimeConfiguration()
{
    if (!GetContext()->CalibrationDateTimeConfigurationRequested.TestAndClear()) {
        return true;
    }
    if (!ChangeTesterMode(OperationMode::Calibration)) {
        return false;
    }
    QThread::msleep(CalibrationModePauseMs);
    if (!ConfigureCalibrationDateTime(GetContext()->CalibrationDateTime.Get())) {
        return false; // Still in calibration mode, out of which the machine restarts the instrument.
    }
    if (!ChangeTesterMode(OperationMode::Normal)) {
        return false;
    }
    QThread::msleep(RestartPauseMs);
    return true;
}

bool TesterConfigurationState::ServeCurrentDateTime()
{
    return !GetContext()->CurrentDateTimeRequested.TestAndClear() || RequestCurrentDateTime();
}

void TesterConfigurationState::ServeCalibrationDateTime()
{
    if (GetContext()->CalibrationDateTimeRequested.TestAndClear()) {
        RequestCalibrationDateTime();
    }
}

} // namespace Vesmar
