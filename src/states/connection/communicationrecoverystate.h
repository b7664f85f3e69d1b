#pragma once

#include "states/state.h"

namespace Vesmar
{

/// Tries to win the instrument back after a failed request, for as long as it takes.
///
/// Sends a status request on every step, with a short time limit and no retransmission, and after more than
/// 10 failures one change to the normal mode, if the last failure was a bad checksum or a refusal. Clears
/// every measurement request and `IsMeasurementModeActive` on entry, and `CommunicationError` when the
/// instrument answers. Reports 103 while it tries, then 100 (silence), 101 (refusals) or 102 (bad checksums).
/// Left for the root of the states when the instrument answers.
class CommunicationRecoveryState : public State
{
public:
    CommunicationRecoveryState(StateMachineContext* context, State* parentState);

    void OnEntry() override;
    void OnRunning() override;

    /// Runs one status exchange and returns its `QueryResult`. `CommunicationError` stays as it is.
    int CheckStatus();

private:
    void ReportRecovery();
    void HandlePersistentFailure(int result);
    void ResetModeOnceOrReport(Error error);

    unsigned _attempts = 0;
    bool _isModeResetDone = false;
};

} // namespace Vesmar
