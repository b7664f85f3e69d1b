#include "storm/checks.h"

#include <numeric>

#include <QString>

#include "support/wire.h"
#include "virtualtime/virtualtime.h"

namespace
{

using std::chrono::milliseconds;

/// Two steps, two pauses between exchanges, and three exchanges with answers of up to 3 ms, each of which the
/// polls of the line make 5.
constexpr milliseconds LongestAbort{2 * 100 + 2 * 10 + 3 * 5};
/// A request that was decided upon waits for the pause after the exchange before it.
constexpr milliseconds OnItsWay{15};
/// From the decision for a state until it is entered, with what is left of the step.
constexpr milliseconds UntilEntered{105};
/// A request, and two repetitions of it.
constexpr int TransmissionsOfStart = 3;
/// Two responses of the largest size, one of which ends a wait, and the reads that empty the line.
constexpr int MostBytesBetweenWrites = 2 * 4096 + 1024;
constexpr std::size_t LinesKept = 120;

QByteArray currentState;
std::function<void()> entryHook;

void ReadBanner(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    const auto lock = SerialLine::Lock();
    static const QString entering = QStringLiteral("ENTERING ");
    const int place = text.indexOf(entering);
    const int end = text.indexOf(QStringLiteral(" STATE"), place);
    if (place >= 0 && end > place) {
        EnterState(text.mid(place + entering.size(), end - place - entering.size()).toLatin1());
    }
}

bool IsRcdRun(const QByteArray& state)
{
    return state.startsWith("RCD ") && state != "RCD MONITORING" && state != "RCD MEASUREMENT MODE";
}

double Milliseconds(Nanoseconds time)
{
    return static_cast<double>(time.count()) / 1e6;
}

} // namespace

QByteArray CurrentState()
{
    return currentState;
}

void EnterState(const QByteArray& state)
{
    currentState = state;
    entryHook();
}

void WatchLog(const std::function<void()>& onEntry)
{
    entryHook = onEntry;
    qInstallMessageHandler(ReadBanner);
}

void Checks::Enabled()
{
    const auto lock = SerialLine::Lock();
    _isEnabled = true;
}

void Checks::Disabling()
{
    const auto lock = SerialLine::Lock();
    _isEnabled = false;
    _disabling = VirtualTime::Now();
    _abortDeadline.reset();
}

void Checks::RevokeStarts()
{
    _startsAllowed = 0;
    _startsRevoked = VirtualTime::Now();
    // The preparation is withdrawn, too, while its settings stay: what the instrument had prepared before
    // runs.
    _payload.clear();
}

/// These states drop what was requested before they were entered.
void Checks::Entered()
{
    const QByteArray state = CurrentState();
    if (state == "COMMUNICATION RECOVERY" || state == "INITIALIZATION") {
        RevokeStarts();
        _isAbortPending = false;
    } else if (IsRcdRun(state)) {
        EnteredRun();
    } else if (state == "MEASUREMENT MODE" || state == "RCD MONITORING") {
        _isAbortPending = false;
    }
}

void Checks::EnteredRun()
{
    const Nanoseconds now = VirtualTime::Now();
    if (now - _startsRevoked <= UntilEntered || SerialLine::Get().LastStall() >= _startsRevoked) {
        // The abort came once the test was decided upon, and found settings of another function
        // (docs/oddities.md).
        _startsAllowed = TransmissionsOfStart;
    }
}

void Checks::Prepared(const QByteArray& payload)
{
    // A preparation that is asked for during an RCD test may be forgotten (docs/oddities.md).
    _payload = CurrentState().startsWith("RCD ") ? QByteArray() : payload;
    _prepared = VirtualTime::Now();
}

void Checks::StartRequested()
{
    // The start before it may still be repeated.
    _startsAllowed = std::min(_startsAllowed + TransmissionsOfStart, 2 * TransmissionsOfStart);
    _isAbortPending = false;
    _abortDeadline.reset();
}

bool Checks::AbortRequested(bool withdraws, bool isStopDue)
{
    if (withdraws) {
        RevokeStarts();
    } else if (!_isAbortPending && CurrentState() != "RCD MONITORING") {
        // In RCD monitoring it begins the preparation anew, or is forgotten (docs/oddities.md).
        _isAbortPending = true;
        _startsRevoked = VirtualTime::Now();
    }
    const bool isWatched = isStopDue && SerialLine::Get().IsCalm() && !_abortDeadline;
    if (isWatched) {
        _abortDeadline = VirtualTime::Now() + LongestAbort + _slack.tolerance;
    }
    return isWatched;
}

void Checks::Record(const std::string& operation)
{
    const auto lock = SerialLine::Lock();
    _lines.push_back("  " + std::to_string(Milliseconds(VirtualTime::Now())) + " ms  " +
                     CurrentState().toStdString() + "  " + operation + "\n");
    if (_lines.size() > LinesKept) {
        _lines.pop_front();
    }
}

void Checks::Requested(const QByteArray& request)
{
    const Nanoseconds now = VirtualTime::Now();
    Record(request.left(12).toHex().toStdString());
    _instrument.Advance(now);
    if (!_isEnabled && now - _disabling >= _slack.tolerance) {
        Report("a request while the library closes or is disabled");
    }
    if (CurrentState() == "PREPARING MEASUREMENT") {
        _preparingPolled = now;
    }
    if (request == Wire::StartMeasurement) {
        CheckStart(now);
    }
    CheckMemory();
    _lastRequest = request;
}

void Checks::CheckStart(Nanoseconds now)
{
    // An Ia/Ta test and those of the IEC are started although an abort is pending (docs/oddities.md).
    const bool isHeldByAbort =
        CurrentState() == "STARTING MEASUREMENT" || CurrentState() == "RCD UbRe MEASUREMENT";
    const bool isOnItsWay = now - _startsRevoked <= OnItsWay + _slack.tolerance ||
                            SerialLine::Get().LastStall() >= _startsRevoked;
    if (_startsAllowed <= 0 && !isOnItsWay) {
        Report("a start that nobody asked for");
    } else if (isHeldByAbort && _isAbortPending && !isOnItsWay) {
        Report("a start while an abort is pending");
    }
    --_startsAllowed;
    if (_lastRequest != Wire::StartMeasurement && CurrentState() == "STARTING MEASUREMENT") {
        CheckPayload();
    }
}

/// A start must be for what was prepared last. The machine decides to start after the last poll of the
/// preparation; a preparation that is asked for after that comes too late.
void Checks::CheckPayload()
{
    if (_instrument.IsPrepared() && !_payload.isEmpty() && _prepared < _preparingPolled &&
        _instrument.Payload() != _payload) {
        Report("a start of another function than the one that was asked for last");
    }
}

void Checks::CheckMemory()
{
    // A wait for the results of an RCD test goes on as long as frames come.
    if (SerialLine::Get().BytesReadSinceWrite() > MostBytesBetweenWrites) {
        Report("an exchange that collects without end");
    }
}

void Checks::Poll()
{
    const Nanoseconds now = VirtualTime::Now();
    _instrument.Advance(now);
    CheckMemory();
    if (!_abortDeadline) {
        return;
    }
    // The instrument reports a function as prepared that it has started (docs/oddities.md).
    if (!SerialLine::Get().IsCalm() || _instrument.IsStartHidden(now)) {
        _abortDeadline.reset();
    } else if (!_instrument.IsOutputOn() && _instrument.OutputChanged() <= *_abortDeadline) {
        _abortDeadline.reset();
    } else if (now > *_abortDeadline + _slack.patience) {
        const Nanoseconds end = _instrument.IsOutputOn() ? now : _instrument.OutputChanged();
        const Nanoseconds aborted = *_abortDeadline - LongestAbort - _slack.tolerance;
        Report("the output is on " + std::to_string(Milliseconds(end - aborted)) + " ms after an abort");
    }
}

void Checks::Report(const std::string& what)
{
    const auto lock = SerialLine::Lock();
    if (_finding.empty()) {
        _finding = what + ", in state " + CurrentState().toStdString() + ", at " +
                   std::to_string(Milliseconds(VirtualTime::Now())) + " ms";
    }
}

std::string Checks::LastLines() const
{
    return std::accumulate(_lines.begin(), _lines.end(), std::string());
}
