#include "simulator/model/rcdtest.h"

#include <algorithm>
#include <utility>

#include "simulator/wire/frames.h"

namespace Simulator
{

namespace
{

/// The line is quiet for this time before a frame, so that the frame is not mistaken for a part of the one
/// before.
constexpr std::chrono::milliseconds QuietBeforeFrame{20};

constexpr int OtherFunction = 1;
constexpr int CleanCode = 0;
constexpr int ResultSize = 24;
constexpr int PiecesPerFrame = 3;

QByteArray StrayBytes()
{
    return QByteArrayLiteral("\x55\xAA");
}

} // namespace

RcdTest::RcdTest(const RcdTimings& timings, quint32 seed) : _timings(timings), _readings(seed) {}

void RcdTest::SetScenario(Scenario scenario, int number)
{
    _scenario = scenario;
    _scenarioNumber = number;
    _isOnceDue = true;
}

bool RcdTest::Prepare(const RcdPreparation& preparation, TimePoint now)
{
    if (IsUnderWay() || _scenario == Scenario::RefusesPrepare) {
        return false;
    }
    _function = preparation.function;
    _kind = preparation.kind;
    _isCheckPending = false;
    _isCheckedClean = false;
    _error = StatusWord::NoError;
    ChangeTo(FunctionState::Preparing, "preparing", now);
    return true;
}

bool RcdTest::Start(TimePoint now)
{
    const bool isReady = _state == FunctionState::Prepared || _isCheckedClean;
    if (!isReady || _scenario == Scenario::StartError) {
        return false;
    }
    if (_scenario == Scenario::RcdSilent || IsDueOnce(Scenario::RcdSilentOnce)) {
        RecordChange(QStringLiteral("does not start"));
        return true;
    }
    _isCheckedClean = false;
    _nextStatusAt = now + _timings.statusPeriod;
    ChangeTo(FunctionState::Running, "running", now);
    return true;
}

void RcdTest::Stop()
{
    Deselect(IsUnderWay() ? "stopped by request" : "deselected");
}

void RcdTest::Deselect(const char* reason)
{
    if (!IsSelected()) {
        return;
    }
    ChangeTo(FunctionState::Idle, reason, TimePoint());
    _function = StatusWord::NoFunction;
    _isCheckPending = false;
    _isCheckedClean = false;
    _frames.clear();
}

void RcdTest::Advance(TimePoint now)
{
    for (auto changeAt = NextChangeAt(); changeAt && *changeAt <= now; changeAt = NextChangeAt()) {
        if (_state == FunctionState::Preparing) {
            FinishPreparing(*changeAt);
        } else if (*changeAt == EndOfRun()) {
            FinishRun(*changeAt);
        } else {
            SendStatus();
            _nextStatusAt += _timings.statusPeriod;
        }
    }
}

std::optional<TimePoint> RcdTest::NextChangeAt() const
{
    if (_state == FunctionState::Preparing && _scenario != Scenario::NeverPrepared) {
        return _enteredAt + _timings.preparing;
    }
    if (_state == FunctionState::Running) {
        return std::min(_nextStatusAt, EndOfRun());
    }
    return std::nullopt;
}

StatusWord RcdTest::Status() const
{
    const bool isOther = _scenario == Scenario::RcdOtherFunction && _state == FunctionState::Prepared;
    StatusWord status;
    status.function = isOther ? OtherFunction : _function;
    status.functionState = static_cast<int>(_state);
    status.newMeasurement = _isCheckPending;
    status.error = Error();
    return status;
}

std::optional<QByteArray> RcdTest::ReadCheckObject()
{
    QByteArray data(ResultSize, '\0');
    if (!_isCheckPending) {
        return data;
    }
    if (_scenario == Scenario::RcdCheckLost) {
        return std::nullopt;
    }
    const int code = CheckCode();
    _isCheckedClean = code == CleanCode;
    _isCheckPending = !_isCheckedClean;
    RecordChange(QStringLiteral("checked: %1").arg(code));
    data[0] = static_cast<char>(code);
    return data;
}

std::vector<FramePiece> RcdTest::CollectFrames()
{
    return std::exchange(_frames, {});
}

QStringList RcdTest::CollectChanges()
{
    return std::exchange(_changes, {});
}

bool RcdTest::HasCheckObject() const
{
    return _scenario == Scenario::RcdCheck || _scenario == Scenario::RcdCheckOnce ||
           _scenario == Scenario::RcdCheckLost;
}

/// Returns true for the first call after this scenario was set.
bool RcdTest::IsDueOnce(Scenario scenario)
{
    return _scenario == scenario && std::exchange(_isOnceDue, false);
}

int RcdTest::CheckCode()
{
    return _scenario == Scenario::RcdCheck || IsDueOnce(Scenario::RcdCheckOnce) ? _scenarioNumber : CleanCode;
}

int RcdTest::Error() const
{
    return _scenario == Scenario::RcdError ? _scenarioNumber : _error;
}

TimePoint RcdTest::EndOfRun() const
{
    return _enteredAt + (_kind == RcdKind::CleanUp ? _timings.cleanUp : _timings.run);
}

void RcdTest::FinishPreparing(TimePoint at)
{
    if (HasCheckObject() || _scenario == Scenario::PrepareError) {
        _isCheckPending = HasCheckObject();
        ChangeTo(FunctionState::PrepareError, "failed to prepare", at);
    } else {
        ChangeTo(FunctionState::Prepared, "prepared", at);
    }
}

void RcdTest::FinishRun(TimePoint at)
{
    if (IsDueOnce(Scenario::RcdErrorOnce)) {
        _error = _scenarioNumber;
        Terminate(at);
    } else if (_scenario == Scenario::RcdError || _scenario == Scenario::EndsWithoutResult) {
        Terminate(at);
    } else {
        if (_kind != RcdKind::CleanUp) {
            SendResult();
        }
        ChangeTo(FunctionState::Completed, "completed", at);
    }
}

void RcdTest::Terminate(TimePoint at)
{
    ChangeTo(FunctionState::Terminated, "terminated without a result", at);
    SendStatus();
}

void RcdTest::SendStatus()
{
    Send(Sealed(Status().Data()));
}

void RcdTest::SendResult()
{
    const QByteArray data =
        _kind == RcdKind::UbRe ? _readings.UbRe() : _readings.IaTa(_scenario != Scenario::RcdNoTa);
    const QByteArray result = Sealed(data);
    if (_scenario == Scenario::RcdGlued) {
        const QByteArray status = Sealed(Status().Data());
        Send(status + status + result);
    } else if (_scenario == Scenario::RcdGarbage) {
        Send(StrayBytes() + result);
    } else {
        Send(result);
    }
}

void RcdTest::Send(const QByteArray& frame)
{
    if (_scenario != Scenario::RcdPieces) {
        _frames.push_back({frame, QuietBeforeFrame});
        return;
    }
    const int size = frame.size() / PiecesPerFrame;
    _frames.push_back({frame.left(size), QuietBeforeFrame});
    _frames.push_back({frame.mid(size, size), std::chrono::microseconds(_scenarioNumber)});
    _frames.push_back({frame.mid(2 * size), std::chrono::microseconds(_scenarioNumber)});
}

void RcdTest::ChangeTo(FunctionState state, const char* change, TimePoint at)
{
    _state = state;
    _enteredAt = at;
    RecordChange(QLatin1String(change));
}

void RcdTest::RecordChange(const QString& change)
{
    _changes.append(QStringLiteral("function %1 %2").arg(QString::number(_function), change));
}

} // namespace Simulator
