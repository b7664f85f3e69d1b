#include "panel/plot/segments.h"

#include <cmath>

namespace Panel
{

QVector<Segment> segmentsOf(const QVector<double>& times, const QVector<double>& values)
{
    constexpr double ShortestGap = 1; // The client's.
    QVector<Segment> segments;
    for (int i = 0; i < values.size(); ++i) {
        if (std::isnan(values.at(i))) {
            continue;
        }
        const bool goesOn =
            !segments.isEmpty() && segments.last().end == i && times.at(i) - times.at(i - 1) < ShortestGap;
        if (goesOn) {
            segments.last().end = i + 1;
        } else {
            segments.append({i, i + 1});
        }
    }
    return segments;
}

} // namespace Panel
