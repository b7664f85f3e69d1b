#pragma once

#include "states/rcd/rcdiecrunningstate.h"

namespace Vesmar
{

/// The instrument's clean-up cycle, which is prepared and started like a test but has no results: it is over
/// for the library once it is started. While something is wrong with the object under test, it polls without
/// limit.
class RCDIECCleanUpState : public RCDIECRunningState
{
public:
    RCDIECCleanUpState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;

protected:
    void TracePhase(MeasurementState phase) const override;
    bool DoesPollCount() const override;
    void BeforePoll() override;
    void AfterPoll(int result) override;
    void AfterPrepared() override;
    void RunMeasuring() override;
};

} // namespace Vesmar
