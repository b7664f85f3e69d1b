#include "simulator/faults/armedfault.h"

namespace Simulator
{

ArmedFault::ArmedFault(const FaultEntry& entry, TimePoint now)
    : _entry(entry), _setAt(now), _random(entry.trigger.seed)
{
}

bool ArmedFault::HappensAt(const QByteArray& request, TimePoint now)
{
    const FaultTrigger& trigger = _entry.trigger;
    if (_entry.IsTimedAct() || (trigger.request && !request.startsWith(*trigger.request))) {
        return false;
    }
    ++_requestCount;
    if (_requestCount < trigger.from.value_or(1) || !IsInTime(now) || IsUsedUp() || !IsDrawn()) {
        return false;
    }
    ++_timesHappened;
    return true;
}

std::optional<TimePoint> ArmedFault::DueAt() const
{
    if (!_entry.IsTimedAct() || _timesHappened > 0) {
        return std::nullopt;
    }
    return _setAt + _entry.trigger.after;
}

bool ArmedFault::SwallowsEverything(TimePoint now) const
{
    return _entry.fault == Fault::Silent && _entry.trigger.IsByTheClock() && !_entry.count && IsInTime(now);
}

bool ArmedFault::IsOver(TimePoint now) const
{
    const FaultTrigger& trigger = _entry.trigger;
    if (_entry.IsTimedAct()) {
        return _timesHappened > 0;
    }
    return IsUsedUp() || (trigger.until && _setAt + *trigger.until <= now);
}

bool ArmedFault::IsInTime(TimePoint now) const
{
    const FaultTrigger& trigger = _entry.trigger;
    return _setAt + trigger.after <= now && (!trigger.until || now < _setAt + *trigger.until);
}

bool ArmedFault::IsUsedUp() const
{
    return _entry.count && _timesHappened >= *_entry.count;
}

/// A distribution of the standard library may give other numbers on another machine; this gives the same
/// everywhere.
bool ArmedFault::IsDrawn()
{
    const std::optional<double>& probability = _entry.trigger.probability;
    return !probability || static_cast<double>(_random()) < *probability * 4294967296.0;
}

} // namespace Simulator
