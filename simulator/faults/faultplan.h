#pragma once

#include <vector>

#include "simulator/faults/armedfault.h"

namespace Simulator
{

/// The faults that can still happen. Those that are over are forgotten.
class FaultPlan
{
public:
    static constexpr int MostFaults = 1000;

    /// Adds faults, whose times and requests count from now on. Returns false, and adds none, when there
    /// would be too many.
    bool Add(const std::vector<FaultEntry>& entries, TimePoint now);
    void Clear() { _faults.clear(); }

    /// Returns the faults that happen at this request, in the order of the plan.
    std::vector<FaultEntry> HappeningAt(const QByteArray& request, TimePoint now);

    /// Returns the acts whose time has come, in the order of their times, and marks them as done.
    std::vector<FaultEntry> CollectDue(TimePoint now);

    /// Returns when the next timed act is due, or nothing when none is left.
    std::optional<TimePoint> NextDueAt() const;

    /// Returns whether even what nobody asked for is lost.
    bool SwallowsEverything(TimePoint now) const;

private:
    void ForgetOver(TimePoint now);
    ArmedFault* NextDue();

    std::vector<ArmedFault> _faults;
};

} // namespace Simulator
