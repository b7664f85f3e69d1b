#pragma once

#include <random>

#include "simulator/faults/faultentry.h"
#include "simulator/wire/traffic.h"

namespace Simulator
{

/// A fault on the watch for its trigger. It is told of every request.
class ArmedFault
{
public:
    /// Its times and its requests are counted from now on.
    ArmedFault(const FaultEntry& entry, TimePoint now);

    const FaultEntry& Entry() const { return _entry; }

    /// Whether it happens at this request; if so, it has happened once more.
    bool HappensAt(const QByteArray& request, TimePoint now);

    /// When it is to be done without a request; nothing when it has been, or waits for requests.
    std::optional<TimePoint> DueAt() const;

    /// It has been done at its time.
    void MarkDone() { ++_timesHappened; }

    /// It swallows not only what was asked for.
    bool SwallowsEverything(TimePoint now) const;

    /// It cannot happen any more.
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
