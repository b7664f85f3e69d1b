#pragma once

#include "states/rcd/rcdiecrunningstate.h"

namespace Vesmar
{

/// The IEC variant of the Ia/Ta test. Polls without limit while the mains voltage does not suit the test, and
/// reports 507 with each of these polls. The instrument's error 525 begins the whole test anew. Reports 200
/// for settings that name another test.
class RCDIECIaTaMeasurementRunningState : public RCDIECRunningState
{
public:
    RCDIECIaTaMeasurementRunningState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnExit() override;
    void OnRunning() override;

protected:
    void TracePhase(MeasurementState phase) const override;
    bool DoesPollCount() const override;
    void AfterOtherStatus() override;
    void OnObjectError() override;
    void OnTerminated() override;

private:
    void RunTest();
};

} // namespace Vesmar
