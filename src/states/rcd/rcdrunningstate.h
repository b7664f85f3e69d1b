#pragma once

#include <Vesmar/measurementstate.h>

#include "states/rcd/rcdstate.h"

namespace Vesmar
{

/// The base of the states that carry one RCD test through its whole life: wait for the instrument, prepare,
/// wait for the prepared function, start, wait for the results. The phase is `MeasurementStatus`.
///
/// Sends status, prepare, the check of the object under test and start. Reports 400, 200, 398, 401, 201 and
/// 521. Left when the phase is `Stopped`, in which every error ends. What a test does differently, it
/// overrides.
class RCDRunningState : public RCDState
{
protected:
    using RCDState::RCDState;

    /// Begins with the first phase and full budgets; the requests are served with it.
    void BeginRun();
    /// One step of the present phase.
    void RunPhase();

    virtual void TracePhase(MeasurementState phase) const;
    virtual void RunPrepared();
    virtual void RunMeasuring();

    // What a test may add.
    virtual void AfterIdleStatus();
    virtual void AfterPrepare();
    virtual void AfterPrepared();
    virtual void AfterOtherStatus(); ///< While the function is not prepared yet.
    virtual bool MayStart() const;

    // How a test ends.
    virtual bool AwaitTestResults(bool* received);
    virtual void OnSilence();
    virtual void OnTerminated();

    void SetPhase(MeasurementState phase);
    void Fail(Error error);

private:
    void RunIdle();
    void JudgeIdle();
    void RunPreparing();
    void RunStarting();
    void FollowFunction();
    void CheckObject();
};

/// The name of a phase as the log has it.
const char* PhaseName(MeasurementState phase);
/// Writes a line in green.
void TraceGreen(const char* text);

} // namespace Vesmar
