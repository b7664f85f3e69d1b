#pragma once

#include <QVector>

#include <array>
#include <optional>

#include "cli/doctor/lineprobe.h"
#include "decode/frames/frame.h"

namespace Cli
{

/// The number of answers that came in less than so many milliseconds, and that the bucket before does not
/// count.
struct TimeBucket {
    std::optional<int> below; ///< None for the answers that are later than all limits.
    int count;
};

/// The shortest, the median and the longest time, in milliseconds.
struct TimeRange {
    double fastest;
    double median;
    double slowest;
};

/// What came back for all the requests.
class LineRecord
{
public:
    /// In milliseconds. An answer that is later than this does not bring back a lost link.
    static constexpr double LatestForRecovery = 500;

    void Add(const LineExchange& exchange);

    int Asked() const;
    int Count(LineAnswer answer) const { return _counts[static_cast<std::size_t>(answer)]; }
    /// The number of answers, of any kind, that came later than `LatestForRecovery`.
    int LateCount() const;
    /// None if no answer came.
    std::optional<TimeRange> Times() const;
    QVector<TimeBucket> Histogram() const;
    /// The status in the last proper answer.
    const std::optional<Vesmar::Status>& Status() const { return _status; }
    /// Why the line itself failed; 0, or an error number.
    int LineError() const { return _lineError; }
    /// Whether more requests make no sense: the line is broken, or too many requests in a row had no answer.
    bool IsHopeless() const;

private:
    std::array<int, 4> _counts{};
    QVector<double> _times; ///< In milliseconds.
    std::optional<Vesmar::Status> _status;
    int _silentInARow = 0;
    int _lineError = 0;
};

} // namespace Cli
