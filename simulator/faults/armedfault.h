#pragma once

#include <random>

#include "simulator/faults/faultentry.h"
#include "simulator/wire/traffic.h"

namespace Simulator
{

/// A fault that waits for its trigger. It must be told of every request.
class ArmedFault
{
public:
    /// Its times and its requests count from now on.
    ArmedFault(const FaultEntry& entry, TimePoint now);

    const FaultEntry& Entry() const { return _entry; }

    /// Returns whether the fault happens at this request. If so, it is counted.
    bool HappensAt(const QByteArray& request, TimePoint now);

    /// Returns when a timed act is due, or nothing when it is done or the fault waits for requests.
    std::optional<TimePoint> DueAt() const;

    /// Tells that the timed act has been done.
    void MarkDone() { ++_timesHappened; }

    /// Returns whether the fault swallows even what nobody asked for.
    bool SwallowsEverything(TimePoint now) const;

    /// Returns whether the fault cannot happen any more.
    bool IsOver(TimePoint now) const;

private:
    bool IsInTime(TimePoint now) const;
    bool IsUsedUp() const;
    bool IsDrawn();

    FaultEntry _entry;
    TimePoint _setAt;
    int _requestCount = 0;
    int _timesHappened = 0;
    std::mt19937 _random;
};

} // namespace Simulator
