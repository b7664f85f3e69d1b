#pragma once

#include "states/state.h"

namespace Vesmar
{

/// The base of every state of a residual-current device test: the exchanges of such a test, each sent once,
/// and the budgets of attempts.
///
/// An exchange returns its `QueryResult` and raises no flag: the state decides what a failure means. Each
/// state resets the counters when it is entered.
class RCDState : public State
{
public:
    RCDState(StateMachineContext* context, State* parentState, QObject* parent,
             const char* banner = "RCDState ");

    /// Publishes the status, with the instrument's error as one of 520 to 534 in `ErrorCode`.
    int RequestRCDStatus(int timeoutMs);
    /// Publishes the status, but writes the error to `*error`, which stays as it is when no RCD status comes.
    int RequestRCDStatus(int timeoutMs, Error* error);
    int PrepareRCDMeasurement(MeasurementSettings& settings, int timeoutMs);
    int StartRCDMeasurement(int timeoutMs);
    /// Writes to `ErrorCode` what is wrong with the object under test.
    int RequestRCDCheckObjectError(int timeoutMs);
    /// Writes to `*error` what is wrong with the object under test. Returns 1 when data came; otherwise
    /// `*error` stays as it is.
    int RequestRCDCheckObjectError(int timeoutMs, Error* error);

    /// Collects the frames that the instrument sends by itself while a test runs: status frames, which are
    /// published, and the result frame. Returns the result frame, a status frame that says that the function
    /// was terminated, or an empty array once the line has been silent for this time or has brought too much
    /// that is no frame. The caller deletes the array.
    QByteArray* AwaitResults(int timeoutMs);
    /// Wait for results and publish them. True when results were published. `*received` is true also when a
    /// status frame said that the function was terminated.
    bool AwaitUbReResults(int timeoutMs, bool* received);
    bool AwaitIaTaResults(int timeoutMs, bool* received);

    /// Clears `ErrorCode` if it holds an error of the object under test, 500 to 507. It belongs to the
    /// interface; no state calls it.
    void ClearCheckObjectError();

protected:
    void ResetAttempts();
    /// Requests the status, counts the attempt, and pauses if the exchange was refused or damaged.
    int AttemptStatus();
    /// Prepares the test of these settings, counts the attempt, and pauses if the exchange was refused or
    /// damaged.
    int AttemptPrepare(MeasurementSettings& settings);
    /// Waits as long as before another attempt and between polls.
    void Pause() const;
    /// Pauses if the exchange was refused or damaged.
    void PauseIfRetryable(int result) const;
    /// Whether the exchange was refused or damaged, so that another attempt may succeed.
    static bool IsRetryable(int result);
    /// Whether the last status, which was one without a function, allows an RCD test.
    bool HasPassedStartTest() const;

    // The budgets of requests, and how much of each has been used.
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
    QByteArray FindFinalFrame(QByteArray& collected);
};

} // namespace Vesmar
