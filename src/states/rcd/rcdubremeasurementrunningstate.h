#pragma once

#include "states/rcd/rcdrunningstate.h"

namespace Vesmar
{

/// The Ub/Re test. A test that stays silent ends at once, with 520. While an abort is pending, it neither
/// starts nor waits for results.
class RCDUbReMeasurementRunningState : public RCDRunningState
{
public:
    RCDUbReMeasurementRunningState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnExit() override;
    void OnRunning() override;

protected:
    void TracePhase(MeasurementState phase) const override;
    void AfterIdleStatus() override;
    void AfterPrepared() override;
    bool MayStart() const override;
    void RunMeasuring() override;
    bool AwaitTestResults(bool* received) override;
    void OnSilence() override;
};

} // namespace Vesmar
