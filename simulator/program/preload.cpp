// Loaded in front of the C library into a program under `vesmar-simulator run`. It leads InstrumentPath to
// the instrument's pseudo-terminal, whose path stands in DeviceVariable, and lets everything else pass.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "simulator/program/preloadinterface.h"

#define VESMAR_INTERPOSE extern "C" __attribute__((visibility("default")))

namespace
{

/// The function of this name in the libraries behind this one. It is looked up once; in a race it is looked
/// up twice, with the same result.
template <typename Signature>
class NextFunction
{
public:
    explicit constexpr NextFunction(const char* name) : _name(name) {}

    template <typename... Arguments>
    auto operator()(Arguments... arguments)
    {
        Signature* function = _function.load(std::memory_order_acquire);
        if (function == nullptr) {
            function = reinterpret_cast<Signature*>(dlsym(RTLD_NEXT, _name));
            _function.store(function, std::memory_order_release);
        }
        return function(arguments...);
    }

private:
    const char* _name;
    std::atomic<Signature*> _function{nullptr};
};

using Open = int(const char*, int, ...);
using OpenAt = int(int, const char*, int, ...);
using FortifiedOpen = int(const char*, int);
using FortifiedOpenAt = int(int, const char*, int);
using OpenStream = FILE*(const char*, const char*);
using Access = int(const char*, int);
using AccessAt = int(int, const char*, int, int);
using Stat = int(const char*, struct stat*);
using Stat64 = int(const char*, struct stat64*);
using StatAt = int(int, const char*, struct stat*, int);
using StatAt64 = int(int, const char*, struct stat64*, int);
using ExtendedStat = int(int, const char*, int, unsigned int, struct statx*);
using VersionedStat = int(int, const char*, struct stat*);
using VersionedStat64 = int(int, const char*, struct stat64*);
using VersionedStatAt = int(int, int, const char*, struct stat*, int);
using VersionedStatAt64 = int(int, int, const char*, struct stat64*, int);
using SetAttributes = int(int, int, const termios*);

NextFunction<Open> nextOpen("open");
NextFunction<Open> nextOpen64("open64");
NextFunction<OpenAt> nextOpenAt("openat");
NextFunction<OpenAt> nextOpenAt64("openat64");
NextFunction<FortifiedOpen> nextFortifiedOpen("__open_2");
NextFunction<FortifiedOpen> nextFortifiedOpen64("__open64_2");
NextFunction<FortifiedOpenAt> nextFortifiedOpenAt("__openat_2");
NextFunction<FortifiedOpenAt> nextFortifiedOpenAt64("__openat64_2");
NextFunction<OpenStream> nextOpenStream("fopen");
NextFunction<OpenStream> nextOpenStream64("fopen64");
NextFunction<Access> nextAccess("access");
NextFunction<Access> nextEffectiveAccess("eaccess");
NextFunction<Access> nextEuidAccess("euidaccess");
NextFunction<AccessAt> nextAccessAt("faccessat");
NextFunction<Stat> nextStat("stat");
NextFunction<Stat64> nextStat64("stat64");
NextFunction<Stat> nextLinkStat("lstat");
NextFunction<Stat64> nextLinkStat64("lstat64");
NextFunction<StatAt> nextStatAt("fstatat");
NextFunction<StatAt64> nextStatAt64("fstatat64");
NextFunction<ExtendedStat> nextExtendedStat("statx");
NextFunction<VersionedStat> nextVersionedStat("__xstat");
NextFunction<VersionedStat64> nextVersionedStat64("__xstat64");
NextFunction<VersionedStat> nextVersionedLinkStat("__lxstat");
NextFunction<VersionedStat64> nextVersionedLinkStat64("__lxstat64");
NextFunction<VersionedStatAt> nextVersionedStatAt("__fxstatat");
NextFunction<VersionedStatAt64> nextVersionedStatAt64("__fxstatat64");
NextFunction<SetAttributes> nextSetAttributes("tcsetattr");

/// Returns the path of the pseudo-terminal, or null when this path is not the instrument's or there is no
/// instrument.
const char* DeviceFor(const char* path)
{
    if (path == nullptr || std::strcmp(path, Simulator::InstrumentPath) != 0) {
        return nullptr;
    }
    return std::getenv(Simulator::DeviceVariable);
}

const char* Redirected(const char* path)
{
    const char* device = DeviceFor(path);
    return device != nullptr ? device : path;
}

/// Returns the flags that make the instrument look like a device even when its path is a link.
int FollowingFlags(const char* path, int flags)
{
    return DeviceFor(path) != nullptr ? flags & ~AT_SYMLINK_NOFOLLOW : flags;
}

/// Returns the last argument of open, which exists only when a file may be created.
mode_t ModeArgument(int flags, va_list arguments)
{
    const bool isThere = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the callers have started the list
    return isThere ? va_arg(arguments, mode_t) : 0;
}

bool IsInstrument(int descriptor)
{
    const char* device = DeviceFor(Simulator::InstrumentPath);
    struct stat wanted = {};
    struct stat given = {};
    return device != nullptr && nextStat(device, &wanted) == 0 && ::fstat(descriptor, &given) == 0 &&
           wanted.st_dev == given.st_dev && wanted.st_ino == given.st_ino;
}

/// Each line is one write, so that programs that share the log do not mix their lines.
void LogLineSettings(const termios& settings)
{
    const char* path = std::getenv(Simulator::LineLogVariable);
    if (path == nullptr) {
        return;
    }
    const int log = nextOpen(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (log < 0) {
        return;
    }
    std::array<char, 128> line{};
    const int size = std::snprintf(
        line.data(), line.size(), "iflag=%x oflag=%x cflag=%x lflag=%x vmin=%d vtime=%d\n", settings.c_iflag,
        settings.c_oflag, settings.c_cflag, settings.c_lflag, settings.c_cc[VMIN], settings.c_cc[VTIME]);
    [[maybe_unused]] const ssize_t written = ::write(log, line.data(), static_cast<std::size_t>(size));
    ::close(log);
}

} // namespace

// The names are those of the C library, reserved ones included. Its declarations use other parameter names.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)

VESMAR_INTERPOSE int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeArgument(flags, arguments);
    va_end(arguments);
    return nextOpen(Redirected(path), flags, mode);
}

VESMAR_INTERPOSE int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeArgument(flags, arguments);
    va_end(arguments);
    return nextOpen64(Redirected(path), flags, mode);
}

VESMAR_INTERPOSE int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeArgument(flags, arguments);
    va_end(arguments);
    return nextOpenAt(folder, Redirected(path), flags, mode);
}

VESMAR_INTERPOSE int openat64(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = ModeArgument(flags, arguments);
    va_end(arguments);
    return nextOpenAt64(folder, Redirected(path), flags, mode);
}

VESMAR_INTERPOSE int __open_2(const char* path, int flags)
{
    return nextFortifiedOpen(Redirected(path), flags);
}

VESMAR_INTERPOSE int __open64_2(const char* path, int flags)
{
    return nextFortifiedOpen64(Redirected(path), flags);
}

VESMAR_INTERPOSE int __openat_2(int folder, const char* path, int flags)
{
    return nextFortifiedOpenAt(folder, Redirected(path), flags);
}

VESMAR_INTERPOSE int __openat64_2(int folder, const char* path, int flags)
{
    return nextFortifiedOpenAt64(folder, Redirected(path), flags);
}

VESMAR_INTERPOSE FILE* fopen(const char* path, const char* mode)
{
    return nextOpenStream(Redirected(path), mode);
}

VESMAR_INTERPOSE FILE* fopen64(const char* path, const char* mode)
{
    return nextOpenStream64(Redirected(path), mode);
}

VESMAR_INTERPOSE int access(const char* path, int mode) noexcept
{
    return nextAccess(Redirected(path), mode);
}

VESMAR_INTERPOSE int eaccess(const char* path, int mode) noexcept
{
    return nextEffectiveAccess(Redirected(path), mode);
}

VESMAR_INTERPOSE int euidaccess(const char* path, int mode) noexcept
{
    return nextEuidAccess(Redirected(path), mode);
}

VESMAR_INTERPOSE int faccessat(int folder, const char* path, int mode, int flags) noexcept
{
    return nextAccessAt(folder, Redirected(path), mode, FollowingFlags(path, flags));
}

VESMAR_INTERPOSE int stat(const char* path, struct stat* result) noexcept
{
    return nextStat(Redirected(path), result);
}

VESMAR_INTERPOSE int stat64(const char* path, struct stat64* result) noexcept
{
    return nextStat64(Redirected(path), result);
}

VESMAR_INTERPOSE int lstat(const char* path, struct stat* result) noexcept
{
    const char* device = DeviceFor(path);
    return device != nullptr ? nextStat(device, result) : nextLinkStat(path, result);
}

VESMAR_INTERPOSE int lstat64(const char* path, struct stat64* result) noexcept
{
    const char* device = DeviceFor(path);
    return device != nullptr ? nextStat64(device, result) : nextLinkStat64(path, result);
}

VESMAR_INTERPOSE int fstatat(int folder, const char* path, struct stat* result, int flags) noexcept
{
    return nextStatAt(folder, Redirected(path), result, FollowingFlags(path, flags));
}

VESMAR_INTERPOSE int fstatat64(int folder, const char* path, struct stat64* result, int flags) noexcept
{
    return nextStatAt64(folder, Redirected(path), result, FollowingFlags(path, flags));
}

VESMAR_INTERPOSE int statx(int folder, const char* path, int flags, unsigned int mask,
                           struct statx* result) noexcept
{
    return nextExtendedStat(folder, Redirected(path), FollowingFlags(path, flags), mask, result);
}

// Programs that were built with an older C library call these.

VESMAR_INTERPOSE int __xstat(int version, const char* path, struct stat* result)
{
    return nextVersionedStat(version, Redirected(path), result);
}

VESMAR_INTERPOSE int __xstat64(int version, const char* path, struct stat64* result)
{
    return nextVersionedStat64(version, Redirected(path), result);
}

VESMAR_INTERPOSE int __lxstat(int version, const char* path, struct stat* result)
{
    const char* device = DeviceFor(path);
    return device != nullptr ? nextVersionedStat(version, device, result)
                             : nextVersionedLinkStat(version, path, result);
}

VESMAR_INTERPOSE int __lxstat64(int version, const char* path, struct stat64* result)
{
    const char* device = DeviceFor(path);
    return device != nullptr ? nextVersionedStat64(version, device, result)
                             : nextVersionedLinkStat64(version, path, result);
}

VESMAR_INTERPOSE int __fxstatat(int version, int folder, const char* path, struct stat* result, int flags)
{
    return nextVersionedStatAt(version, folder, Redirected(path), result, FollowingFlags(path, flags));
}

VESMAR_INTERPOSE int __fxstatat64(int version, int folder, const char* path, struct stat64* result, int flags)
{
    return nextVersionedStatAt64(version, folder, Redirected(path), result, FollowingFlags(path, flags));
}

VESMAR_INTERPOSE int tcsetattr(int descriptor, int when, const termios* settings) noexcept
{
    if (settings != nullptr && IsInstrument(descriptor)) {
        LogLineSettings(*settings);
    }
    return nextSetAttributes(descriptor, when, settings);
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)
