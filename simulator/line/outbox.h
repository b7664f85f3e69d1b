#pragma once

#include <chrono>
#include <deque>
#include <optional>

#include <QByteArray>

#include "simulator/faults/faultentry.h"
#include "simulator/wire/traffic.h"

namespace Simulator
{

/// An answer, or a piece of a frame that nobody asked for.
struct OutgoingBytes {
    QByteArray bytes;
    std::optional<Exchange> exchange; ///< the exchange that the bytes answer
    TimePoint readyAt;
    std::chrono::microseconds pauseBefore{0}; ///< the least time for which the line is quiet before them
    bool isUnfinished = false;                ///< more of the same answer follows
};

/// What is still to go out on a line, in its order, and when each part of it is due.
class Outbox
{
public:
    /// The baud rate is in bits per second; with 0, bytes take no time.
    explicit Outbox(int baud) : _baud(baud) {}

    /// Adds the answer of an exchange, in pieces where a fault splits it.
    void Add(const Exchange& exchange, const FaultEntry* split, TimePoint now);
    void AddUnasked(const FramePiece& piece, TimePoint now);
    void Clear() { _bytes.clear(); }
    bool IsEmpty() const { return _bytes.empty(); }

    /// When the next bytes are due; nothing while there are none. An answer goes out in one piece when its
    /// last byte would arrive, because with pauses in it, it would look like several.
    std::optional<TimePoint> NextAt() const;

    /// Removes the bytes that are due next, if any.
    std::optional<OutgoingBytes> RemoveDue(TimePoint now);

    /// Tells that the bytes that were removed last went out at this time.
    void SetQuietSince(TimePoint time) { _quietSince = time; }

    /// How long so many bytes take on the line.
    std::chrono::microseconds LineTime(int byteCount) const;

private:
    int _baud;
    std::deque<OutgoingBytes> _bytes;
    TimePoint _quietSince;
};

} // namespace Simulator
