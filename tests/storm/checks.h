#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QByteArray>

#include "storm/serialline.h"

/// The state that the machine is in, by the banners of its log.
QByteArray CurrentState();
void EnterState(const QByteArray& state);
/// Begins to read the log, which goes nowhere else, and tells whenever a state is entered.
void WatchLog(const std::function<void()>& onEntry);

/// What the checks allow for in real time. Virtual time is exact.
struct Slack {
    Nanoseconds tolerance{0}; ///< For what the processor and the system's terminal need.
    Nanoseconds patience{0};  ///< How much later they look, as a thread's stall is known once it is over.
};

/// What must hold at any time. It sees every request of the driver and every operation of the application,
/// and keeps the first thing that did not hold.
class Checks
{
public:
    Checks(Instrument& instrument, Slack slack) : _instrument(instrument), _slack(slack) {}

    /// The application does something.
    void Record(const std::string& operation);
    void Enabled();
    void Disabling();
    void Prepared(const QByteArray& payload);
    void StartRequested();
    /// It withdraws what was requested, or leaves that to the machine. A stop may be due. Returns whether the
    /// time until then is watched from now on.
    bool AbortRequested(bool withdraws, bool isStopDue);
    /// An operation after which an abort may take longer than it does by itself.
    void AbortSuperseded() { _abortDeadline.reset(); }

    /// The machine has entered a state.
    void Entered();
    /// A request has arrived at the line.
    void Requested(const QByteArray& request);
    /// Looks at what time alone brings about.
    void Poll();
    /// The first finding stays.
    void Report(const std::string& what);

    const std::string& Finding() const { return _finding; }
    std::string LastLines() const;

private:
    void RevokeStarts();
    void EnteredRun();
    void CheckStart(Nanoseconds now);
    void CheckPayload();
    void CheckMemory();

    Instrument& _instrument;
    Slack _slack;
    std::string _finding;
    std::deque<std::string> _lines; ///< What happened last.
    QByteArray _lastRequest;
    bool _isEnabled = false;
    Nanoseconds _disabling{0};
    int _startsAllowed = 0;
    bool _isAbortPending = false;
    Nanoseconds _startsRevoked{0};   ///< Or an abort became pending.
    Nanoseconds _preparingPolled{0}; ///< The last request of a state that prepares.
    QByteArray _payload;
    Nanoseconds _prepared{0};
    std::optional<Nanoseconds> _abortDeadline;
};
