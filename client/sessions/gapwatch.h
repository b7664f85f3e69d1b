#pragma once

#include <VesmarClient/gap.h>

#include <QVector>

#include <chrono>
#include <optional>

namespace VesmarClient
{

/// Finds the times without a reading in a continuous measurement, which gives one with every status. Times
/// are those of the job's own clock, in milliseconds.
class GapWatch
{
public:
    /// From here on, the time without a reading is a gap. Answers that are damaged or refused, and repeated,
    /// take less; one request without an answer takes more.
    static constexpr std::chrono::milliseconds Limit{1000};

    /// To be called when the measurement begins to run.
    void Begin(qint64 now) { _last = now; }

    // Each tells whether the gaps have changed.

    /// To be called when a reading has come.
    bool AcceptReading(qint64 now);
    /// To be called from time to time while no reading comes.
    bool Advance(qint64 now);
    /// To be called when the link is lost: from the last reading on there is a gap, however short it is yet.
    bool LoseLink(qint64 now);
    /// To be called when the measurement has ended.
    bool End(qint64 now);

    const QVector<Gap>& Gaps() const { return _gaps; }

private:
    bool Extend(qint64 now);

    std::optional<qint64> _last; ///< The last reading, or the beginning; none while nothing runs.
    bool _isOpen = false;        ///< The last gap goes on.
    QVector<Gap> _gaps;
};

} // namespace VesmarClient
