#pragma once

#include "states/rcd/rcdrunningstate.h"

namespace Vesmar
{

/// The base of the two IEC tests, which go on polling while something is wrong with the object under test:
/// what the last check found becomes the error only when the budget of polls runs out.
class RCDIECRunningState : public RCDRunningState
{
protected:
    using RCDRunningState::RCDRunningState;

    void BeginIECRun();

    void RunPrepared() override;
    void AfterPrepare() override;

    /// Whether the poll under way uses up the budget.
    virtual bool DoesPollCount() const = 0;
    virtual void BeforePoll();
    virtual void AfterPoll(int result);
    /// The check has found something wrong with the object.
    virtual void OnObjectError();

    /// What the last check found; `NoErrors` when nothing is pending.
    Error _savedCheckObjectError = Error::NoErrors;

private:
    void JudgePoll(Error error);
    void FollowFunction();
    void CheckObject();
};

} // namespace Vesmar
