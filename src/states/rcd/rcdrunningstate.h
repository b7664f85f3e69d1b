#pragma once

#include "states/rcd/rcdpreparedphase.h"

namespace Vesmar
{

/// The base of the states that carry one RCD test through its whole life: wait for the instrument, prepare,
/// wait for the prepared function, start, wait for the results. The phase is `MeasurementStatus`.
///
/// Sends status, prepare, the check of the object under test and start. Clears both requests on entry.
/// Reports 400, 200, 398, 401, 201, 520 and 521. Left when the phase is `Stopped`, in which every error ends.
/// What a test does differently stands in `RCDRules`.
class RCDRunningState : public RCDPreparedPhase
{
public:
    void OnEntry() override;
    void OnExit() override;

protected:
    using RCDPreparedPhase::RCDPreparedPhase;

    /// One step of the present phase.
    void RunPhase();

private:
    void RunIdle();
    void LeaveIdleWhenReady();
    void RunPreparing();
    void RunStarting();
    void RunMeasuring(MeasurementState phase);
    void WaitForResults();
    bool AwaitTestResults(bool* received);
    void EndAfterTermination();
    void EndAfterSilence();
    bool IsHeldByAbort() const;
};

} // namespace Vesmar
