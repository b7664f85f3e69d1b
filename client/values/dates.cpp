#include "client/values/dates.h"

namespace VesmarClient
{

QDateTime AsWallClock(const QDateTime& value)
{
    return {value.date(), value.time(), Qt::UTC};
}

bool IsKnownToTheInstrument(const QDate& date)
{
    constexpr int FirstYear = 2001;
    constexpr int LastYear = 2099;
    return date.isValid() && date.year() >= FirstYear && date.year() <= LastYear;
}

} // namespace VesmarClient
