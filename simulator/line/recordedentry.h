#pragma once

#include <QByteArray>

#include <chrono>

namespace Simulator
{

/// What once happened on a line: an exchange, or bytes that nobody asked for.
struct RecordedEntry {
    QByteArray request;                 ///< empty when nobody asked for the bytes
    QByteArray bytes;                   ///< what the instrument sent; empty for no answer
    std::chrono::milliseconds after{0}; ///< since the entry before, of bytes that nobody asked for

    bool IsUnasked() const { return request.isEmpty(); }
};

} // namespace Simulator
