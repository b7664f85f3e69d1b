#include "simulator/faults/faultplan.h"

#include <algorithm>

namespace Simulator
{

bool FaultPlan::Add(const std::vector<FaultEntry>& entries, TimePoint now)
{
    ForgetOver(now);
    if (_faults.size() + entries.size() > MostFaults) {
        return false;
    }
    for (const FaultEntry& entry : entries) {
        _faults.emplace_back(entry, now);
    }
    return true;
}

std::vector<FaultEntry> FaultPlan::HappeningAt(const QByteArray& request, TimePoint now)
{
    std::vector<FaultEntry> happening;
    for (ArmedFault& fault : _faults) {
        if (fault.HappensAt(request, now)) {
            happening.push_back(fault.Entry());
        }
    }
    return happening;
}

std::vector<FaultEntry> FaultPlan::CollectDue(TimePoint now)
{
    std::vector<FaultEntry> due;
    for (ArmedFault* next = NextDue(); next != nullptr && *next->DueAt() <= now; next = NextDue()) {
        due.push_back(next->Entry());
        next->MarkDone();
    }
    return due;
}

std::optional<TimePoint> FaultPlan::NextDueAt() const
{
    std::optional<TimePoint> earliest;
    for (const ArmedFault& fault : _faults) {
        const std::optional<TimePoint> dueAt = fault.DueAt();
        if (dueAt && (!earliest || *dueAt < *earliest)) {
            earliest = dueAt;
        }
    }
    return earliest;
}

bool FaultPlan::SwallowsEverything(TimePoint now) const
{
    return std::any_of(_faults.begin(), _faults.end(),
                       [now](const ArmedFault& fault) { return fault.SwallowsEverything(now); });
}

void FaultPlan::ForgetOver(TimePoint now)
{
    _faults.erase(std::remove_if(_faults.begin(), _faults.end(),
                                 [now](const ArmedFault& fault) { return fault.IsOver(now); }),
                  _faults.end());
}

ArmedFault* FaultPlan::NextDue()
{
    const std::optional<TimePoint> dueAt = NextDueAt();
    const auto next = std::find_if(_faults.begin(), _faults.end(), [&dueAt](const ArmedFault& fault) {
        return dueAt && fault.DueAt() == dueAt;
    });
    return next == _faults.end() ? nullptr : &*next;
}

} // namespace Simulator
