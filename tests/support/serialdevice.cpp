#include "support/serialdevice.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstring>
#include <mutex>
#include <thread>

#include "support/systemfunction.h"

namespace
{

constexpr char SerialDevice[] = "/dev/ttycommunication";
constexpr int Never = -1;

struct Redirection {
    std::mutex mutex;
    QByteArray path;
    int openError = 0;
    QList<int> writeLimits;
    SerialDeviceRecord record;
};

Redirection& Current()
{
    static Redirection redirection;
    return redirection;
}

std::atomic<int> serialDescriptor{-1};
std::atomic<int> readsBeforeFailure{Never};
std::atomic<int> readFailures{Never};
std::atomic<bool> isBabbling{false};
std::atomic<bool> isOutputHeld{false};
std::atomic<bool> isConfigurationFailing{false};

int OpenFile(const char* path, int flags, mode_t mode)
{
    static auto* const systemOpen = SystemFunction<int(const char*, int, ...)>("open");
    return systemOpen(path, flags, mode);
}

int OpenSerialDevice(int flags)
{
    Redirection& redirection = Current();
    const std::lock_guard<std::mutex> lock(redirection.mutex);
    ++redirection.record.opens;
    redirection.record.openFlags = flags;
    if (redirection.openError != 0 || redirection.path.isEmpty()) {
        errno = redirection.openError != 0 ? redirection.openError : ENOENT;
        return -1;
    }
    serialDescriptor = OpenFile(redirection.path.constData(), flags, 0);
    return serialDescriptor;
}

int OpenPath(const char* path, int flags, mode_t mode)
{
    return std::strcmp(path, SerialDevice) == 0 ? OpenSerialDevice(flags) : OpenFile(path, flags, mode);
}

mode_t ModeArgument(int flags, va_list arguments)
{
    const bool hasMode = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return hasMode ? va_arg(arguments, mode_t) : 0;
}

/// Counts the failures, too, if they are limited.
bool ReadMustFail(int descriptor)
{
    if (descriptor != serialDescriptor || readsBeforeFailure != 0 || readFailures == 0) {
        return false;
    }
    if (readFailures > 0) {
        --readFailures;
    }
    return true;
}

/// What becomes of this write; its whole size where nothing was said.
int ConsumeWriteLimit(int descriptor, size_t size)
{
    const int whole = static_cast<int>(size);
    if (descriptor != serialDescriptor) {
        return whole;
    }
    Redirection& redirection = Current();
    const std::lock_guard<std::mutex> lock(redirection.mutex);
    return redirection.writeLimits.isEmpty() ? whole : std::min(redirection.writeLimits.takeFirst(), whole);
}

} // namespace

// These take the place of the C library's for the whole program, whatever library calls them.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's parameters have reserved
// names.
extern "C" {

__attribute__((visibility("default"))) int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeArgument(flags, arguments);
    va_end(arguments);
    return OpenPath(path, flags, mode);
}

__attribute__((visibility("default"))) int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeArgument(flags, arguments);
    va_end(arguments);
    return OpenPath(path, flags | O_LARGEFILE, mode);
}

__attribute__((visibility("default"))) ssize_t read(int descriptor, void* buffer, size_t size)
{
    static auto* const systemRead = SystemFunction<ssize_t(int, void*, size_t)>("read");
    if (ReadMustFail(descriptor)) {
        errno = EIO;
        return -1;
    }
    if (descriptor == serialDescriptor && isBabbling) {
        std::memset(buffer, 'x', 1);
        return 1;
    }
    const ssize_t received = systemRead(descriptor, buffer, size);
    if (descriptor == serialDescriptor && received > 0 && readsBeforeFailure > 0) {
        --readsBeforeFailure;
    }
    return received;
}

__attribute__((visibility("default"))) ssize_t write(int descriptor, const void* buffer, size_t size)
{
    static auto* const systemWrite = SystemFunction<ssize_t(int, const void*, size_t)>("write");
    const int limit = ConsumeWriteLimit(descriptor, size);
    if (limit < 0) {
        errno = -limit;
        return -1;
    }
    return systemWrite(descriptor, buffer, static_cast<size_t>(limit));
}

__attribute__((visibility("default"))) int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    static auto* const systemIoctl = SystemFunction<int(int, unsigned long, ...)>("ioctl");
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    if (descriptor == serialDescriptor && request == TIOCOUTQ && isOutputHeld) {
        *static_cast<int*>(argument) = 1;
        return 0;
    }
    return systemIoctl(descriptor, request, argument);
}

__attribute__((visibility("default"))) int tcdrain(int descriptor)
{
    static auto* const systemTcdrain = SystemFunction<int(int)>("tcdrain");
    while (descriptor == serialDescriptor && isOutputHeld) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return systemTcdrain(descriptor);
}

__attribute__((visibility("default"))) int tcsetattr(int descriptor, int action,
                                                     const termios* settings) noexcept
{
    static auto* const systemTcsetattr = SystemFunction<int(int, int, const termios*)>("tcsetattr");
    Redirection& redirection = Current();
    const std::lock_guard<std::mutex> lock(redirection.mutex);
    ++redirection.record.configurations;
    redirection.record.configurationAction = action;
    redirection.record.configuration = *settings;
    if (isConfigurationFailing) {
        errno = EIO;
        return -1;
    }
    return systemTcsetattr(descriptor, action, settings);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

void RedirectSerialDevice(const QByteArray& path)
{
    Redirection& redirection = Current();
    const std::lock_guard<std::mutex> lock(redirection.mutex);
    redirection.path = path;
    redirection.openError = 0;
    redirection.writeLimits.clear();
    redirection.record = {};
    readsBeforeFailure = Never;
    isBabbling = false;
    isOutputHeld = false;
    isConfigurationFailing = false;
}

QByteArray SerialDeviceRedirection()
{
    Redirection& redirection = Current();
    const std::lock_guard<std::mutex> lock(redirection.mutex);
    return redirection.path;
}

void FailSerialDeviceOpen(int error)
{
    Redirection& redirection = Current();
    const std::lock_guard<std::mutex> lock(redirection.mutex);
    redirection.openError = error;
}

void FailSerialDeviceReads(int afterReadsWithBytes, int count)
{
    readFailures = count;
    readsBeforeFailure = afterReadsWithBytes;
}

void LetSerialDeviceBabble()
{
    isBabbling = true;
}

void LimitSerialDeviceWrites(const QList<int>& limits)
{
    Redirection& redirection = Current();
    const std::lock_guard<std::mutex> lock(redirection.mutex);
    redirection.writeLimits = limits;
}

void HoldSerialDeviceOutput(bool held)
{
    isOutputHeld = held;
}

void FailSerialDeviceConfiguration()
{
    isConfigurationFailing = true;
}

SerialDeviceRecord RecordedSerialDevice()
{
    Redirection& redirection = Current();
    const std::lock_guard<std::mutex> lock(redirection.mutex);
    return redirection.record;
}
