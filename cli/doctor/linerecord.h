#pragma once

#include <QVector>

#include <array>
#include <optional>

#include "cli/doctor/lineprobe.h"
#include "cli/frames/frame.h"

namespace Cli
{

/// How many answers came in less than so many milliseconds, and not in less than the bucket before says.
struct TimeBucket {
    std::optional<int> below; ///< None for all the others.
    int count;
};

/// The shortest, the middle and the longest time, in milliseconds.
struct TimeRange {
    double fastest;
    double median;
    double slowest;
};

/// What came of all the requests.
class LineRecord
{
public:
    /// An answer later than this one does not bring back a lost link. In milliseconds.
    static constexpr double LatestForRecovery = 500;

    void Add(const LineExchange& exchange);

    int Asked() const;
    int Count(LineAnswer answer) const { return _counts[static_cast<std::size_t>(answer)]; }
    /// The answers, of whatever kind, that came later than `LatestForRecovery`.
    int LateCount() const;
    /// None where no answer came.
    std::optional<TimeRange> Times() const;
    QVector<TimeBucket> Histogram() const;
    /// Of the last proper answer.
    const std::optional<Vesmar::Status>& Status() const { return _status; }
    /// Why the line itself failed; 0, or an error number.
    int LineError() const { return _lineError; }
    /// Whether it makes no sense to ask on: too many requests in a row without an answer, or a broken line.
    bool IsHopeless() const;

private:
    std::array<int, 4> _counts{};
    QVector<double> _times; ///< In milliseconds.
    std::optional<Vesmar::Status> _status;
    int _silentInARow = 0;
    int _lineError = 0;
};

} // namespace Cli
