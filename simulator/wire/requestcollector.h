#pragma once

#include <optional>

#include <QByteArray>

#include "simulator/wire/traffic.h"

namespace Simulator
{

/// A request as it came off the line, and the time when its first byte arrived.
struct CollectedRequest {
    QByteArray frame;
    TimePoint receivedAt;
};

/// Cuts the bytes of the line into requests. A request is over as soon as a known one is complete with a
/// valid checksum; anything else is over when the line falls silent.
class RequestCollector
{
public:
    void Append(const QByteArray& bytes, TimePoint now);

    /// Removes and returns the next request that is over, if there is one.
    std::optional<CollectedRequest> Extract(TimePoint now);

    /// Returns when the silence will be long enough to end what has been collected, or nothing while no bytes
    /// are there.
    std::optional<TimePoint> SilenceEndsAt() const;

private:
    int CompleteSize() const;

    QByteArray _bytes;
    TimePoint _firstByteAt;
    TimePoint _lastByteAt;
};

} // namespace Simulator
