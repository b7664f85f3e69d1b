#pragma once

#include <QString>

#include <optional>

#include <VesmarClient/linkstatistics.h>

namespace VesmarClient
{

/// Counts what the lines of the driver's trace tell of the serial line. It copies none of them.
class LineCounter
{
public:
    void Count(const QString& line);
    /// What has been counted since the line was opened last.
    const LinkStatistics& Statistics() const { return _statistics; }

private:
    void CountExchange(QStringView exchange);
    void CountBanner(const QString& line);
    void CountFailure(int LinkStatistics::*counter, uint request);

    LinkStatistics _statistics;
    bool _isRecovering = false;
    std::optional<uint> _failedRequest; ///< The hash of the last request, if it has failed.
};

} // namespace VesmarClient
