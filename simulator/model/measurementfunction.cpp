#include "simulator/model/measurementfunction.h"

#include <algorithm>

namespace Simulator
{

MeasurementFunction::MeasurementFunction(const FunctionTimings& timings, quint32 seed)
    : _timings(timings), _readings(seed)
{
}

bool MeasurementFunction::Prepare(Measurement measurement, TimePoint now)
{
    if (IsUnderWay() || _scenario == Scenario::RefusesPrepare) {
        return false;
    }
    _number = FunctionNumber(measurement);
    _measurement = measurement;
    _readings.Begin(measurement);
    _hasNewResult = false;
    ChangeTo(FunctionState::Preparing, "preparing", now);
    return true;
}

bool MeasurementFunction::Start(TimePoint now)
{
    if (_state != FunctionState::Prepared) {
        return false;
    }
    if (!_isStartPending) {
        _isStartPending = true;
        _countsFrom = now;
    }
    return true;
}

void MeasurementFunction::Stop(TimePoint now)
{
    if (!IsSelected() || _state == FunctionState::Stopping || _runsOn) {
        return;
    }
    if (_isStartPending) {
        _isStartPending = false;
        RecordChange("start cancelled by request");
    }
    if (!IsUnderWay()) {
        if (_reportedAt) {
            Deselect("deselected");
        }
    } else if (!_measurement) {
        Deselect("stopped by request");
    } else if (_state == FunctionState::Running && _scenario == Scenario::RunsOnAfterStop) {
        _runsOn = true;
        _countsFrom = now;
    } else {
        ChangeTo(FunctionState::Stopping, "stopping", now);
    }
}

void MeasurementFunction::RunForeign(int number)
{
    _number = number;
    _measurement.reset();
    _hasNewResult = false;
    ChangeTo(FunctionState::Running, "running", TimePoint());
}

void MeasurementFunction::Deselect(const char* reason)
{
    if (!IsSelected()) {
        return;
    }
    ChangeTo(FunctionState::Idle, reason, TimePoint());
    _number = 0;
    _measurement.reset();
    _hasNewResult = false;
}

void MeasurementFunction::Advance(TimePoint now)
{
    for (auto changeAt = NextChangeAt(); changeAt && *changeAt <= now; changeAt = NextChangeAt()) {
        DeliverResults(*changeAt);
        EnterNextState(*changeAt);
    }
    DeliverResults(now);
}

std::optional<TimePoint> MeasurementFunction::NextChangeAt() const
{
    const std::optional<std::chrono::milliseconds> time = TimeInState();
    if (!time || (WaitsForReport() && !_reportedAt)) {
        return std::nullopt;
    }
    const TimePoint end = _countsFrom + *time;
    return WaitsForReport() ? std::max(end, *_reportedAt) : end;
}

bool MeasurementFunction::IsUnderWay() const
{
    return _isStartPending || _state == FunctionState::Starting || _state == FunctionState::Running ||
           _state == FunctionState::Stopping;
}

void MeasurementFunction::MarkReported(TimePoint now)
{
    if (!_reportedAt) {
        _reportedAt = now;
    }
}

QByteArray MeasurementFunction::ReadResult()
{
    _hasNewResult = false;
    return _readings.Data();
}

QStringList MeasurementFunction::CollectChanges()
{
    QStringList changes;
    changes.swap(_changes);
    return changes;
}

bool MeasurementFunction::DeliversResults() const
{
    return _state == FunctionState::Running && _measurement && !IsSingle(*_measurement) &&
           _scenario != Scenario::EndsWithoutResult;
}

/// A state that a scenario shows only for a moment stays until the status has reported it, however late.
bool MeasurementFunction::WaitsForReport() const
{
    return (_state == FunctionState::Starting &&
            (_scenario == Scenario::FallsBack || _scenario == Scenario::FastSingle)) ||
           (_state == FunctionState::Running && _scenario == Scenario::EndsWithoutResult);
}

/// Returns how long the present state lasts, or nothing when it does not end by itself.
std::optional<std::chrono::milliseconds> MeasurementFunction::TimeInState() const
{
    if (!_measurement) {
        return std::nullopt;
    }
    if (_isStartPending) {
        return _timings.startDelay;
    }
    if (_runsOn) {
        return _timings.runOn;
    }
    if (_state == FunctionState::Preparing && _scenario != Scenario::NeverPrepared) {
        return _timings.preparing;
    }
    if (_state == FunctionState::Starting && _scenario != Scenario::StaysStarting) {
        return _timings.starting;
    }
    if (_state == FunctionState::Running && _scenario == Scenario::EndsWithoutResult) {
        return _timings.runWithoutResult;
    }
    if (_state == FunctionState::Running && IsSingle(*_measurement)) {
        return _timings.singleRun;
    }
    if (_state == FunctionState::Stopping) {
        return _timings.stopping;
    }
    return std::nullopt;
}

void MeasurementFunction::EnterNextState(TimePoint at)
{
    switch (_state) {
    case FunctionState::Preparing:
        if (_scenario == Scenario::PrepareError) {
            ChangeTo(FunctionState::PrepareError, "failed to prepare", at);
        } else {
            ChangeTo(FunctionState::Prepared, "prepared", at);
        }
        break;
    case FunctionState::Prepared:
        ChangeTo(FunctionState::Starting, "starting", at);
        break;
    case FunctionState::Starting:
        EnterAfterStarting(at);
        break;
    case FunctionState::Running:
        EnterAfterRunning(at);
        break;
    case FunctionState::Stopping:
        ChangeTo(FunctionState::Terminated, "stopped by request", at);
        break;
    case FunctionState::Idle:
    case FunctionState::Completed:
    case FunctionState::PrepareError:
    case FunctionState::StartError:
    case FunctionState::Terminated:
        break; // These states are at rest.
    }
}

void MeasurementFunction::EnterAfterStarting(TimePoint at)
{
    if (_scenario == Scenario::StartError) {
        ChangeTo(FunctionState::StartError, "failed to start", at);
    } else if (_scenario == Scenario::FallsBack) {
        ChangeTo(FunctionState::Prepared, "fell back to prepared", at);
    } else if (_scenario == Scenario::FastSingle && IsSingle(*_measurement)) {
        Complete(at);
    } else {
        _nextResultAt = at + ResultPeriod;
        ChangeTo(FunctionState::Running, "running", at);
    }
}

void MeasurementFunction::EnterAfterRunning(TimePoint at)
{
    if (_runsOn) {
        ChangeTo(FunctionState::Stopping, "stopping", at);
    } else if (_scenario == Scenario::EndsWithoutResult) {
        ChangeTo(FunctionState::Terminated, "terminated without a result", at);
    } else {
        Complete(at);
    }
}

void MeasurementFunction::Complete(TimePoint at)
{
    _readings.Advance(_timings.singleRun);
    _hasNewResult = true;
    ChangeTo(FunctionState::Completed, "completed", at);
}

void MeasurementFunction::DeliverResults(TimePoint now)
{
    while (DeliversResults() && _nextResultAt <= now) {
        _readings.Advance(ResultPeriod);
        _hasNewResult = true;
        _nextResultAt += ResultPeriod;
    }
}

void MeasurementFunction::ChangeTo(FunctionState state, const char* change, TimePoint at)
{
    _state = state;
    _countsFrom = at;
    _isStartPending = false;
    _runsOn = false;
    _reportedAt.reset();
    RecordChange(change);
}

void MeasurementFunction::RecordChange(const char* change)
{
    _changes.append(QStringLiteral("function %1 %2").arg(_number).arg(QLatin1String(change)));
}

} // namespace Simulator
