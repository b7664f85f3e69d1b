#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace Decode
{

/// A line of a log.
struct LogLine {
    qint64 number;   ///< Counts from 1.
    QByteArray text; ///< Without its end.
    QString damage;  ///< Why the line cannot be used, and what to do; empty if it can.
};

/// Reads a log line by line, in pieces: a log of any size needs the same memory, and each line is given out
/// as soon as it is there.
class LogReader
{
public:
    static constexpr int LongestLine = 65536; ///< In bytes; the library's own are far shorter.

    /// Reads from the first descriptor until the second becomes readable; a negative one never does. Both
    /// stay the caller's.
    explicit LogReader(int descriptor, int stopDescriptor = -1)
        : _descriptor(descriptor), _stopDescriptor(stopDescriptor)
    {
    }

    /// The next line; none at the end, after a stop, and after a failed read (see `LastError()`).
    std::optional<LogLine> Next();

    /// Whether a line is there already, so that `Next()` does not wait.
    bool HasLine() const { return _piece.indexOf('\n', _position) >= 0; }

    /// The error number of the failed read, or 0.
    int LastError() const { return _error; }

    /// Whether the reading was stopped, so that lines may be left. A part of a line is not given out.
    bool IsStopped() const { return _isStopped; }

private:
    bool Fill();
    bool WaitForBytes();

    int _descriptor;
    int _stopDescriptor;
    bool _isStopped = false;
    int _error = 0;
    qint64 _lineCount = 0;
    QByteArray _piece;
    int _position = 0; ///< In the piece.
};

} // namespace Decode
