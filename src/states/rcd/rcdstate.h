#pragma once

#include "states/state.h"

namespace Vesmar
{

/// The base of every state of a residual-current device test: the exchanges of such a test, each sent once,
/// and the budgets of attempts.
///
/// An exchange returns what became of it, a `QueryResult`, and raises no flag: what a failure means is for
/// the state to decide. Each state resets the counters when it is entered.
class RCDState : public State
{
public:
    RCDState(StateMachineContext* context, State* parentState, QObject* parent,
             const char* banner = "RCDState ");

    /// The status into the cells, with the instrument's error as one of 520 to 534 in `ErrorCode`.
    int RequestRCDStatus(int timeoutMs);
    /// As above, but the error goes to `*error`, which is left alone when no RCD status comes.
    int RequestRCDStatus(int timeoutMs, Error* error);
    int PrepareRCDMeasurement(MeasurementSettings& settings, int timeoutMs);
    int StartRCDMeasurement(int timeoutMs);
    /// What is wrong with the object under test, into `ErrorCode`.
    int RequestRCDCheckObjectError(int timeoutMs);
    /// As above, into `*error`. Returns 1 when an answer came; otherwise `*error` is left alone.
    int RequestRCDCheckObjectError(int timeoutMs, Error* error);

    /// Collects what the instrument sends by itself while a test runs: status frames, which are parsed, and
    /// the result frame. Returns the result frame, a status frame that says that the function was terminated,
    /// or an empty array once the line stays silent for so long. The caller deletes it.
    QByteArray* AwaitResults(int timeoutMs);
    /// True when results came and were published. `*received` is true also when only the end came.
    bool AwaitUbReResults(int timeoutMs, bool* received);
    bool AwaitIaTaResults(int timeoutMs, bool* received);

    /// Forgets an error of the object under test, 500 to 507; any other stays.
    void ClearCheckObjectError();

protected:
    void ResetAttempts();
    /// A status request that counts and, where trying again may help, pauses.
    int AttemptStatus();
    /// The same for the preparation of the present settings.
    int AttemptPrepare();
    /// The pause before a refused or damaged exchange is tried again, and between polls.
    void Pause() const;
    /// Pauses when trying again may help.
    void PauseIfRetryable(int result) const;
    static bool IsRetryable(int result);
    /// Whether the last status, one without a function, allows an RCD test.
    bool HasPassedStartTest() const;

    // Budgets of requests, and what has been used of them.
    int _maxStatusAttempts = 9;
    int _statusAttempts = 0;
    int _maxPrepareAttempts = 3;
    int _prepareAttempts = 0;
    int _lsaap = 5; ///< Status requests while prepared.
    int _lsaapCounter = 0;
    int _requestTimeout = 500; ///< Milliseconds.
    int _retryDelay = 400;     ///< Milliseconds.
    int _maxStartAttempts = 3;
    int _startAttempts = 0;
    int _resultTimeout = 1000; ///< Milliseconds.

private:
    bool Collect(QByteArray& collected, int timeoutMs);
    QByteArray TakeFinalFrame(QByteArray& collected);
};

} // namespace Vesmar
