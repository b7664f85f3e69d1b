#include "explorer/line.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdarg>
#include <cstring>
#include <ctime>
#include <utility>

#include <Vesmar/serialdevice.h>

namespace
{

using Nanoseconds = long long;

constexpr Nanoseconds PerSecond = 1000000000;
constexpr Nanoseconds PerMillisecond = 1000000;
constexpr Nanoseconds PerMicrosecond = 1000;
/// Longer than the silence after which a frame is over.
constexpr Nanoseconds PauseAfterFrame = 5 * PerMillisecond;

struct State {
    Line::Peer* peer = nullptr;
    int port = -1;
    QByteArray waiting;             ///< What the driver can read.
    bool isSilent = false;          ///< Nothing will come, so that a sleep may be long.
    bool isAskedInThisStep = false; ///< The driver has sent a request.
    bool hasJustWritten = false;
    int readsInThisStep = 0;
    Nanoseconds quietUntil = 0;
};

State line;
std::atomic<Nanoseconds> now{PerSecond};

template <typename Function>
Function* SystemFunction(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// When nothing will come, a poll of a millisecond lasts a second.
void Sleep(Nanoseconds duration)
{
    now += line.isSilent ? std::max(duration, PerSecond) : duration;
    if (std::exchange(line.hasJustWritten, false)) {
        line.peer->Released();
    }
}

/// A driver that reads a second time in a step without having sent a request waits for what comes by itself.
void LetPeerSpeak()
{
    ++line.readsInThisStep;
    if (line.isAskedInThisStep || line.readsInThisStep < 2 || now < line.quietUntil) {
        return;
    }
    line.waiting = line.peer->Speak();
    line.isSilent = line.waiting.isEmpty();
}

ssize_t ReadLine(void* buffer, size_t size)
{
    if (line.waiting.isEmpty()) {
        LetPeerSpeak();
    }
    const auto count = std::min(size, static_cast<size_t>(line.waiting.size()));
    std::memcpy(buffer, line.waiting.constData(), count);
    line.waiting.remove(0, static_cast<int>(count));
    if (count > 0) {
        line.quietUntil = now + PauseAfterFrame;
        line.isSilent = line.isAskedInThisStep && line.waiting.isEmpty();
    }
    return static_cast<ssize_t>(count);
}

ssize_t WriteLine(const void* bytes, size_t size)
{
    line.isAskedInThisStep = true;
    line.hasJustWritten = true;
    line.waiting = line.peer->Answer(QByteArray(static_cast<const char*>(bytes), static_cast<int>(size)));
    line.isSilent = line.waiting.isEmpty();
    return static_cast<ssize_t>(size);
}

Nanoseconds Duration(const timespec& time)
{
    return time.tv_sec * PerSecond + time.tv_nsec;
}

} // namespace

namespace Line
{

void Connect(Peer* peer)
{
    line.peer = peer;
}

void BeginStep()
{
    line.waiting.clear();
    line.isSilent = false;
    line.isAskedInThisStep = false;
    line.readsInThisStep = 0;
    line.quietUntil = 0;
}

} // namespace Line

// These take the place of the C library's for the whole program, Qt included.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's have reserved names.
extern "C" {

#define TAKES_PLACE __attribute__((visibility("default")))

/// The serial device is a file that swallows everything, whose settings and readiness are the system's
/// affair.
TAKES_PLACE int open(const char* path, int flags, ...)
{
    static auto* const systemOpen = SystemFunction<int(const char*, int, ...)>("open");
    if (std::strcmp(path, Vesmar::SerialDevicePath) == 0) {
        line.port = systemOpen("/dev/null", O_RDWR);
        return line.port;
    }
    va_list list;
    va_start(list, flags);
    const mode_t mode = va_arg(list, mode_t);
    va_end(list);
    return systemOpen(path, flags, mode);
}

TAKES_PLACE ssize_t read(int descriptor, void* buffer, size_t size)
{
    static auto* const systemRead = SystemFunction<ssize_t(int, void*, size_t)>("read");
    return descriptor == line.port ? ReadLine(buffer, size) : systemRead(descriptor, buffer, size);
}

TAKES_PLACE ssize_t write(int descriptor, const void* bytes, size_t size)
{
    static auto* const systemWrite = SystemFunction<ssize_t(int, const void*, size_t)>("write");
    return descriptor == line.port ? WriteLine(bytes, size) : systemWrite(descriptor, bytes, size);
}

TAKES_PLACE int close(int descriptor)
{
    static auto* const systemClose = SystemFunction<int(int)>("close");
    if (descriptor == line.port) {
        line.port = -1;
    }
    return systemClose(descriptor);
}

TAKES_PLACE int usleep(useconds_t microseconds)
{
    Sleep(microseconds * PerMicrosecond);
    return 0;
}

TAKES_PLACE int nanosleep(const timespec* duration, timespec* /*remaining*/)
{
    Sleep(Duration(*duration));
    return 0;
}

TAKES_PLACE int clock_nanosleep(clockid_t /*clock*/, int flags, const timespec* time, timespec* /*remaining*/)
{
    Sleep((flags & TIMER_ABSTIME) != 0 ? std::max(0LL, Duration(*time) - now) : Duration(*time));
    return 0;
}

/// The explorer measures its own time by the date.
TAKES_PLACE int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    static auto* const systemClock = SystemFunction<int(clockid_t, timespec*)>("clock_gettime");
    if (clock != CLOCK_MONOTONIC) {
        return systemClock(clock, time);
    }
    time->tv_sec = static_cast<time_t>(now / PerSecond);
    time->tv_nsec = static_cast<long>(now % PerSecond);
    return 0;
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
