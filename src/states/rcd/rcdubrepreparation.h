#pragma once

#include <Vesmar/measurementstate.h>

#include "states/rcd/rcdstate.h"

namespace Vesmar
{

/// The preparation of the Ub/Re test, which comes before its start: the other runs prepare their tests once
/// they are started.
///
/// Sends status, prepare and the check of the object under test. Reports 400, 200, 398 and 401, the
/// instrument's errors 520 to 534 and those of the object, 500 to 507; all but the last of these withdraw the
/// preparation.
///
/// `MeasurementStatus` tells how far the preparation is: at `Unknown` nobody has asked for it, at `Preparing`
/// it waits for the instrument's readiness, at `Prepared` it sends the request, at `Idle` it watches the
/// prepared function.
class RCDUbRePreparation : public RCDState
{
protected:
    RCDUbRePreparation(StateMachineContext* context, State* parentState, const char* banner);

    /// One step of the preparation that has come so far.
    void ContinuePreparation(MeasurementState status);

    /// Stops whatever function is active. False when a request failed; a later step goes on then.
    bool StopFunction();

private:
    void BeginPreparation();
    void AwaitReadiness();
    void DecideByReadiness();
    void Prepare();
    void WatchPrepared();
    void DecideByStatus(Error error);
    void DecideByFunctionState();
    void Fail(Error error);
    void WithdrawPreparation();
};

} // namespace Vesmar
