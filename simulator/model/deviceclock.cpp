#include "simulator/model/deviceclock.h"

#include <utility>

namespace Simulator
{

DeviceClock::DeviceClock(QDateTime date, TimePoint now) : _date(std::move(date)), _setAt(now) {}

void DeviceClock::Set(const QDateTime& date, TimePoint now)
{
    _date = date;
    _setAt = now;
}

QDateTime DeviceClock::Date(TimePoint now) const
{
    return _date.addMSecs(std::chrono::duration_cast<std::chrono::milliseconds>(now - _setAt).count());
}

} // namespace Simulator
