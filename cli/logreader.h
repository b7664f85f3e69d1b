#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace Cli
{

/// A line of a log.
struct LogLine {
    qint64 number;   ///< Counts from 1.
    QByteArray text; ///< Without its end.
    QString damage;  ///< Why it cannot be used, and what to do; empty where it can.
};

/// Reads a log line by line, in pieces: it takes the same memory for a log of any size, and gives out each
/// line as soon as it is there.
class LogReader
{
public:
    static constexpr int LongestLine = 65536; ///< In bytes; the library's own are far shorter.

    /// Reads from the descriptor, which stays the caller's.
    explicit LogReader(int descriptor) : _descriptor(descriptor) {}

    /// Nothing at the end, or after a read that has failed: `LastError()` tells.
    std::optional<LogLine> Next();

    /// The error number of the read that has failed, or 0.
    int LastError() const { return _error; }

private:
    bool Fill();

    int _descriptor;
    int _error = 0;
    qint64 _lineCount = 0;
    QByteArray _piece;
    int _position = 0; ///< In the piece.
};

} // namespace Cli
