#include "fuzz/scriptedline.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <ctime>
#include <utility>

#include <Vesmar/serialdevice.h>

namespace
{

constexpr std::int64_t FirstSecond = 1000000000;
constexpr std::int64_t PerSecond = 1000000;

ScriptedLine* line = nullptr;
int lineDescriptor = -1;

bool IsLine(int descriptor)
{
    return line != nullptr && descriptor == lineDescriptor;
}

/// Fine steps around the silence that ends an answer, coarse ones around the time limits.
std::int64_t PauseOf(int number)
{
    constexpr int FineSteps = 32;
    const std::int64_t coarse = number - FineSteps + 1;
    return number < FineSteps ? number * 100 : coarse * coarse * 4000;
}

} // namespace

ScriptedLine::ScriptedLine(const QByteArray& script, std::function<void()> close)
    : _script(reinterpret_cast<const std::uint8_t*>(script.constData()),
              static_cast<std::size_t>(script.size())),
      _close(std::move(close))
{
    line = this;
}

ScriptedLine::~ScriptedLine()
{
    line = nullptr;
}

void ScriptedLine::Expect(const QByteArray& request)
{
    _request = request;
    _rest.clear();
}

ssize_t ScriptedLine::Read(char* buffer, std::size_t size)
{
    _isDiscarded = true;
    if (!_readErrors.empty()) {
        errno = _readErrors.front();
        _readErrors.pop_front();
        return -1;
    }
    const QByteArray bytes = _arrived.left(static_cast<int>(size));
    _arrived.remove(0, bytes.size());
    _read += bytes;
    std::memcpy(buffer, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return bytes.size();
}

ssize_t ScriptedLine::Write(const char* bytes, std::size_t size)
{
    const QByteArray offered(bytes, static_cast<int>(size));
    Require(!_isClosing, "nothing is written once the port is about to close");
    Require(offered == _rest || (offered == _request && _isDiscarded),
            "a write goes on behind the one before, or begins with a request behind a read");
    _read.clear();
    _rest = offered;
    int accepted = offered.size();
    if (!_writeResults.empty()) {
        accepted = std::min(accepted, _writeResults.front());
        _writeResults.pop_front();
    }
    if (accepted < 0) {
        errno = -accepted;
        return -1;
    }
    _rest.remove(0, accepted);
    _written += offered.left(accepted);
    if (std::exchange(_awaitsRequest, false)) {
        _nextStepAt = _now;
    }
    return accepted;
}

void ScriptedLine::Sleep(std::int64_t microseconds)
{
    _now += microseconds;
    _isDiscarded = false;
    Play();
}

/// Everything that has happened by now.
void ScriptedLine::Play()
{
    constexpr std::int64_t CopyPause = 500;
    while (!_awaitsRequest && _nextStepAt <= _now && (_copies > 0 || !_script.IsOver())) {
        if (_copies > 0) {
            --_copies;
            _arrived += _lastBytes;
            _nextStepAt += CopyPause;
        } else {
            PlayStep();
        }
    }
}

void ScriptedLine::PlayStep()
{
    const int step = _script.Byte();
    const int number = step & 0x3F;
    switch (step >> 6) {
    case 0:
        _awaitsRequest = number == 0;
        _nextStepAt += PauseOf(number);
        break;
    case 1:
        _lastBytes = _script.Bytes(number + 1);
        _arrived += _lastBytes;
        break;
    case 2:
        _copies = number + 1;
        break;
    default:
        Fail(number);
        break;
    }
}

void ScriptedLine::Fail(int number)
{
    if (number < 4) {
        _readErrors.push_back(number % 2 == 0 ? EIO : EINTR);
    } else if (number < 8) {
        const int error = number % 2 == 0 ? EIO : number == 5 ? EINTR : EAGAIN;
        _writeResults.push_back(-error);
    } else if (number < 62) {
        _writeResults.push_back(number - 8);
    } else if (!_isClosing) {
        _close();
        _isClosing = true;
    }
}

// These take the place of the C library's for the whole program, whatever library calls them.
extern "C" {

#define TAKES_PLACE __attribute__((visibility("default")))

TAKES_PLACE int open(const char* path, int flags, ...)
{
    va_list list;
    va_start(list, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(list, mode_t) : 0;
    va_end(list);
    const bool isLine = line != nullptr && std::strcmp(path, Vesmar::SerialDevicePath) == 0;
    const auto descriptor =
        static_cast<int>(syscall(SYS_openat, AT_FDCWD, isLine ? "/dev/null" : path, flags, mode));
    if (isLine) {
        lineDescriptor = descriptor;
    }
    return descriptor;
}

TAKES_PLACE ssize_t read(int descriptor, void* buffer, size_t size)
{
    return IsLine(descriptor) ? line->Read(static_cast<char*>(buffer), size)
                              : syscall(SYS_read, descriptor, buffer, size);
}

TAKES_PLACE ssize_t write(int descriptor, const void* bytes, size_t size)
{
    return IsLine(descriptor) ? line->Write(static_cast<const char*>(bytes), size)
                              : syscall(SYS_write, descriptor, bytes, size);
}

TAKES_PLACE int usleep(useconds_t microseconds)
{
    if (line == nullptr) {
        const timespec duration{static_cast<time_t>(microseconds / PerSecond),
                                static_cast<long>(microseconds % PerSecond * 1000)};
        return static_cast<int>(syscall(SYS_nanosleep, &duration, nullptr));
    }
    line->Sleep(microseconds);
    return 0;
}

TAKES_PLACE int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    if (line == nullptr || clock != CLOCK_MONOTONIC) { // The fuzzer watches the date for its own time limits.
        return static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    }
    time->tv_sec = static_cast<time_t>(FirstSecond + line->Now() / PerSecond);
    time->tv_nsec = static_cast<long>(line->Now() % PerSecond * 1000);
    return 0;
}

} // extern "C"
