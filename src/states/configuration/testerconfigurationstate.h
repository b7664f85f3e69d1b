#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Carries out the requests for device information and for reading and writing both dates, all in one step.
///
/// Sends version, the two date writes and the two date reads, in this order. The calibration date is written
/// between a change to calibration mode and one back. Clears the flag of a request before its frame goes out,
/// so that a request that fails is not repeated; the requests after it wait for a later step. Left for
/// monitoring when no request is pending.
class TesterConfigurationState : public State
{
public:
    TesterConfigurationState(StateMachineContext* context, State* parentState);

    void OnRunning() override;

private:
    bool ReadDeviceInformationIfRequested();
    bool WriteCurrentDateTimeIfRequested();
    bool WriteCalibrationDateTimeIfRequested();
    bool ReadCurrentDateTimeIfRequested();
    void ReadCalibrationDateTimeIfRequested();
};

} // namespace Vesmar
