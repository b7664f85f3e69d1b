#pragma once

#include <vector>

#include "simulator/faults/armedfault.h"

namespace Simulator
{

/// The faults that are to come. Those that are over are forgotten.
class FaultPlan
{
public:
    static constexpr int MostFaults = 1000;

    /// Their times and requests are counted from now on. False when there would be too many.
    bool Add(const std::vector<FaultEntry>& entries, TimePoint now);
    void Clear() { _faults.clear(); }

    /// What happens at this request, in the order of the plan.
    std::vector<FaultEntry> HappeningAt(const QByteArray& request, TimePoint now);

    /// What is to be done without a request until now, in the order of its time.
    std::vector<FaultEntry> CollectDue(TimePoint now);

    /// When `CollectDue()` will next have something, if ever.
    std::optional<TimePoint> NextDueAt() const;

    /// Even what nobody asked for is lost.
    bool SwallowsEverything(TimePoint now) const;

private:
    void ForgetOver(TimePoint now);
    ArmedFault* NextDue();

    std::vector<ArmedFault> _faults;
};

} // namespace Simulator
