#pragma once

#include <QByteArray>

#include <chrono>

namespace Simulator
{

/// A part of a frame that nobody asked for, or the whole of it.
struct FramePiece {
    QByteArray bytes;
    std::chrono::microseconds pauseBefore; ///< how long the line is quiet before it, at least
};

} // namespace Simulator
