#pragma once

#include <chrono>

#include <QByteArray>

namespace Simulator
{

/// The simulator's time: monotonic, the same clock that QElapsedTimer reads.
using Clock = std::chrono::steady_clock;
using TimePoint = Clock::time_point;

/// A request and what went back. An empty answer means silence.
struct Exchange {
    QByteArray request;
    QByteArray answer;
    TimePoint receivedAt; ///< when the first byte of the request arrived
    TimePoint answeredAt; ///< when the answer went out
};

/// A part of a frame that nobody asked for, or the whole of it.
struct FramePiece {
    QByteArray bytes;
    std::chrono::microseconds pauseBefore; ///< the least time for which the line is quiet before the piece
};

/// An entry of a recording: an exchange, or bytes that nobody asked for.
struct RecordedEntry {
    QByteArray request;                 ///< empty when nobody asked for the bytes
    QByteArray bytes;                   ///< what the instrument sent; empty for no answer
    std::chrono::milliseconds after{0}; ///< time since the entry before, of bytes that nobody asked for

    bool IsUnasked() const { return request.isEmpty(); }
};

} // namespace Simulator
