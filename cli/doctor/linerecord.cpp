#include "cli/doctor/linerecord.h"

#include <algorithm>
#include <numeric>

namespace Cli
{

namespace
{

constexpr int MostSilentInARow = 3;
constexpr std::array<int, 12> Limits{1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 2000, 4000};

} // namespace

void LineRecord::Add(const LineExchange& exchange)
{
    if (exchange.lineError != 0) {
        _lineError = exchange.lineError;
        return;
    }
    const LineAnswer answer = Classify(exchange.answer);
    ++_counts[static_cast<std::size_t>(answer)];
    if (answer == LineAnswer::Silent) {
        ++_silentInARow;
        return;
    }
    _silentInARow = 0;
    _times.append(std::chrono::duration<double, std::milli>(exchange.time).count());
    if (const auto status = Decode::StatusIn(exchange.answer)) {
        _status = status;
    }
}

int LineRecord::Asked() const
{
    return std::accumulate(_counts.cbegin(), _counts.cend(), 0);
}

int LineRecord::LateCount() const
{
    return static_cast<int>(
        std::count_if(_times.cbegin(), _times.cend(), [](double time) { return time > LatestForRecovery; }));
}

std::optional<TimeRange> LineRecord::Times() const
{
    if (_times.isEmpty()) {
        return std::nullopt;
    }
    QVector<double> sorted = _times;
    std::sort(sorted.begin(), sorted.end());
    return TimeRange{sorted.first(), sorted.at(sorted.size() / 2), sorted.last()};
}

QVector<TimeBucket> LineRecord::Histogram() const
{
    QVector<TimeBucket> histogram;
    int counted = 0;
    for (const int limit : Limits) {
        const auto all = static_cast<int>(
            std::count_if(_times.cbegin(), _times.cend(), [limit](double time) { return time < limit; }));
        histogram.append({limit, all - counted});
        counted = all;
    }
    histogram.append({std::nullopt, static_cast<int>(_times.size()) - counted});
    return histogram;
}

bool LineRecord::IsHopeless() const
{
    return _lineError != 0 || _silentInARow >= MostSilentInARow;
}

} // namespace Cli
