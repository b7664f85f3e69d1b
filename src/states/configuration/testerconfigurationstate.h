#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Serves the one-shot requests: device information and both dates, read and written, in one step.
///
/// Each request's flag is cleared before its frame goes out, so a request that fails is not repeated; the
/// later ones then wait for a later step. Sends version, the two date reads and the two date writes, the
/// calibration date between a change to calibration mode and one back. Left for monitoring when no request is
/// pending.
class TesterConfigurationState : public State
{
public:
    TesterConfigurationState(StateMachineContext* context, State* parentState);

    void OnRunning() override;

private:
    bool ServeDeviceInformation();
    bool ServeCurrentDateTimeConfiguration();
    bool ServeCalibrationDateTimeConfiguration();
    bool ServeCurrentDateTime();
    void ServeCalibrationDateTime();
};

} // namespace Vesmar
