#include "states/configuration/testerconfigurationstate.h"

#include <QThread>

#include "context/statemachinecontext.h"

namespace Vesmar
{

namespace
{

constexpr unsigned long PauseInCalibrationModeMs = 500;
constexpr unsigned long PauseAfterCalibrationModeMs = 2000;

} // namespace

TesterConfigurationState::TesterConfigurationState(StateMachineContext* context, State* parentState)
    : State(context, parentState, nullptr, "TESTER CONFIGURATION STATE ")
{
}

void TesterConfigurationState::OnRunning()
{
    // The first request that fails ends the step.
    const bool isLinkGood = ReadDeviceInformationIfRequested() && WriteCurrentDateTimeIfRequested() &&
                            WriteCalibrationDateTimeIfRequested() && ReadCurrentDateTimeIfRequested();
    if (isLinkGood) {
        ReadCalibrationDateTimeIfRequested();
    }
}

bool TesterConfigurationState::ReadDeviceInformationIfRequested()
{
    return !GetContext()->DeviceInformationRequested.TestAndClear() || RequestVersion();
}

bool TesterConfigurationState::WriteCurrentDateTimeIfRequested()
{
    return !GetContext()->CurrentDateTimeConfigurationRequested.TestAndClear() ||
           ConfigureCurrentDateTime(GetContext()->CurrentDateTime.Get());
}

bool TesterConfigurationState::WriteCalibrationDateTimeIfRequested()
{
    if (!GetContext()->CalibrationDateTimeConfigurationRequested.TestAndClear()) {
        return true;
    }
    if (!ChangeTesterMode(OperationMode::Calibration)) {
        return false;
    }
    QThread::msleep(PauseInCalibrationModeMs);
    if (!ConfigureCalibrationDateTime(GetContext()->CalibrationDateTime.Get())) {
        return false; // The instrument stays in calibration mode, and the machine restarts it.
    }
    if (!ChangeTesterMode(OperationMode::Normal)) {
        return false;
    }
    QThread::msleep(PauseAfterCalibrationModeMs);
    return true;
}

bool TesterConfigurationState::ReadCurrentDateTimeIfRequested()
{
    return !GetContext()->CurrentDateTimeRequested.TestAndClear() || RequestCurrentDateTime();
}

void TesterConfigurationState::ReadCalibrationDateTimeIfRequested()
{
    if (GetContext()->CalibrationDateTimeRequested.TestAndClear()) {
        RequestCalibrationDateTime();
    }
}

} // namespace Vesmar
