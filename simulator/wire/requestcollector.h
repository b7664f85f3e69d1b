#pragma once

#include <optional>

#include <QByteArray>

#include "simulator/wire/traffic.h"

namespace Simulator
{

/// A request as it came off the line, and when its first byte did.
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

    /// The next request that is over, if any.
    std::optional<CollectedRequest> Extract(TimePoint now);

    /// When the silence is long enough to end what has been collected; nothing while there is nothing.
    std::optional<TimePoint> SilenceEndsAt() const;

private:
    int CompleteSize() const;

    QByteArray _bytes;
    TimePoint _firstByteAt;
    TimePoint _lastByteAt;
};

} // namespace Simulator
