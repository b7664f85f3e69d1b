#pragma once

#include <QDateTime>

#include "simulator/wire/traffic.h"

namespace Simulator
{

/// The instrument's clock, which runs on from the date that was set.
class DeviceClock
{
public:
    DeviceClock(QDateTime date, TimePoint now);

    void Set(const QDateTime& date, TimePoint now);
    QDateTime Date(TimePoint now) const;

private:
    QDateTime _date;
    TimePoint _setAt;
};

} // namespace Simulator
