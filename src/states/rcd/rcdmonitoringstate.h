#pragma once

#include "states/rcd/rcdstate.h"

namespace Vesmar
{

/// Waits for an RCD test to be started. The Ub/Re test is prepared here; the others prepare themselves once
/// they are started.
///
/// Sends status, prepare and the check of the object under test, and stops a function that is in the way of a
/// preparation. Reports 400, 200, 398 and 401, the instrument's errors 520 to 534 and those of the object,
/// 500 to 507; all but the last of these withdraw the preparation. Left when a start is requested, for the
/// state of the settings' test.
///
/// How far the preparation is, `MeasurementStatus` tells: `Unknown` is not asked for, `Preparing` waits for
/// the instrument's readiness, `Prepared` sends the request, `Idle` watches the prepared function.
class RCDMonitoringState : public RCDState
{
public:
    RCDMonitoringState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;

private:
    bool ServeAbort();
    void ServeRCDAbort();
    void ServeRCDIECAbort();
    bool IsToBePrepared();
    void FollowPreparation();
    void BeginPreparation();
    void AwaitReadiness();
    void JudgeReadiness();
    void Prepare();
    void WatchPrepared();
    void JudgePrepared(Error error);
    void FollowFunction();
    bool StopFunction();
    void Fail(Error error);
    void WithdrawPreparation();
};

} // namespace Vesmar
