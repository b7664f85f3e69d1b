#include "panel/session/record.h"

#include <limits>

namespace Panel
{

using VesmarClient::FunctionInfo;
using VesmarClient::Reading;
using VesmarClient::ReadingInfo;
using VesmarClient::Result;

FunctionInfo Record::function() const
{
    return VesmarClient::Functions::find(settings.function());
}

void Record::append(double time, const Result& result)
{
    const QVector<ReadingInfo> readings = VesmarClient::Functions::find(result.function()).readings;
    values.resize(readings.size());
    times.append(time);
    for (int i = 0; i < readings.size(); ++i) {
        const Reading reading = result.reading(readings.at(i).identifier);
        values[i].append(reading.isPresent ? reading.value : std::numeric_limits<double>::quiet_NaN());
    }
    latest = result;
}

} // namespace Panel
