#pragma once

#include <Vesmar/measurementstate.h>

#include "states/rcd/rcdrules.h"
#include "states/rcd/rcdstate.h"

namespace Vesmar
{

/// The phase of a run in which it polls until the instrument has prepared the function.
///
/// Sends status, one in each step, and the check of the object under test when the instrument reports a
/// prepare error. Reports 401 or the error of the object once the polls are used up, and 398. Leads to the
/// phase `Starting`, or ends the run.
class RCDPreparedPhase : public RCDState
{
protected:
    RCDPreparedPhase(StateMachineContext* context, State* parentState, RCDRun run, const char* banner);

    void RunPrepared();
    /// Gives the polls back, and forgets what was wrong with the object.
    void RestorePolls();

    RCDRun GetRun() const { return _run; }
    void SetPhase(MeasurementState phase);
    /// Ends the run with this error.
    void Fail(Error error);
    void PauseIf(const RCDRule<bool>& rule) const;

private:
    Error ErrorOfUsedUpPolls() const;
    int Poll(Error* error);
    bool DoesPollCount() const;
    void DecideByPoll(Error error);
    void DecideByFunctionState();
    void EndPreparation();
    void CheckObject();
    void WaitForObject();

    RCDRun _run;
    /// What the last poll found wrong with the object under test; `NoErrors` when it found nothing.
    Error _savedCheckObjectError = Error::NoErrors;
};

} // namespace Vesmar
