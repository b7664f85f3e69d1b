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

    /// Reads from the one descriptor until the other becomes readable; a negative one never does. Both stay
    /// the caller's.
    explicit LogReader(int descriptor, int stopDescriptor = -1)
        : _descriptor(descriptor), _stopDescriptor(stopDescriptor)
    {
    }

    /// Nothing at the end, when it was stopped, or after a read that has failed: `LastError()` tells.
    std::optional<LogLine> Next();

    /// The error number of the read that has failed, or 0.
    int LastError() const { return _error; }

    /// Whether lines may be left. A line that was there in part is not given out.
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

} // namespace Cli
