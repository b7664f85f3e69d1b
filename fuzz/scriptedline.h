#pragma once

#include <deque>
#include <functional>

#include <QByteArray>

#include "fuzz/finding.h"

/// The serial line of a target: the bytes and pauses on it, and what fails, come from the fuzzer's input. The
/// device, the sleeps and the clocks of the program are its own while one exists, so that no time passes. One
/// at a time.
///
/// The script is a row of steps. The upper two bits of a step's first byte are its kind, the others a number
/// n:
///
///     0  n = 0: waits for the next request; else a pause, of up to 4 s
///     1  n + 1 bytes follow, which arrive at once
///     2  the bytes that arrived last arrive n + 1 times more, 500 us apart
///     3  a call fails or is cut short, or the port is about to close; see `Fail`
class ScriptedLine
{
public:
    ScriptedLine(const QByteArray& script, std::function<void()> close);
    ~ScriptedLine();
    ScriptedLine(const ScriptedLine&) = delete;
    ScriptedLine& operator=(const ScriptedLine&) = delete;

    /// In microseconds, from the beginning of the script.
    std::int64_t Now() const { return _now; }
    bool IsClosing() const { return _isClosing; }

    /// Everything that was written, and everything that was read since something was written last.
    const QByteArray& Written() const { return _written; }
    const QByteArray& ReadSinceWritten() const { return _read; }

    /// Tells what will be written, once or more.
    void Expect(const QByteArray& request);

    // The system calls.
    ssize_t Read(char* buffer, std::size_t size);
    ssize_t Write(const char* bytes, std::size_t size);
    void Sleep(std::int64_t microseconds);

private:
    void Play();
    void PlayStep();
    void Fail(int number);

    Input _script;
    std::function<void()> _close;
    std::int64_t _now = 0;
    std::int64_t _nextStepAt = 0;
    bool _awaitsRequest = false;
    bool _isClosing = false;
    bool _isDiscarded = false; ///< What had arrived was read, and no time has passed since.
    int _copies = 0;           ///< How often the last bytes are still to arrive.
    QByteArray _lastBytes;
    QByteArray _arrived;
    std::deque<int> _readErrors;
    std::deque<int> _writeResults; ///< How many bytes are accepted; an error as a negative number.
    QByteArray _request;
    QByteArray _rest; ///< What the last write left over.
    QByteArray _written;
    QByteArray _read;
};
