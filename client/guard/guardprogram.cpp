#include "client/guard/guardprogram.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "client/guard/channel.h"

namespace VesmarClient
{

namespace
{

/// Longer than any computer takes to start a small program.
constexpr timeval AnswerTime{10, 0};

/// The library or the program that this code is in.
QString ThisFile()
{
    Dl_info information{};
    link_map* map = nullptr;
    const bool isKnown = ::dladdr1(reinterpret_cast<const void*>(&StartGuard), &information,
                                   reinterpret_cast<void**>(&map), RTLD_DL_LINKMAP) != 0;
    const QString library = isKnown ? QFile::decodeName(map->l_name) : QString();
    return library.isEmpty() ? QFile::symLinkTarget(QStringLiteral("/proc/self/exe")) : library;
}

/// What the guard begins with: its end of the channel and nothing else that this process has open, a session
/// of its own, and no signal blocked or ignored.
class SpawnSettings
{
public:
    explicit SpawnSettings(int channel)
    {
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, channel, GuardChannel);
        ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        ::posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
        ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
        sigset_t none;
        sigset_t all;
        ::sigemptyset(&none);
        ::sigfillset(&all);
        ::posix_spawnattr_init(&attributes);
        ::posix_spawnattr_setsigmask(&attributes, &none);
        ::posix_spawnattr_setsigdefault(&attributes, &all);
        ::posix_spawnattr_setflags(&attributes,
                                   POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnSettings()
    {
        ::posix_spawnattr_destroy(&attributes);
        ::posix_spawn_file_actions_destroy(&actions);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
};

/// Runs the program, which leaves a child of its own behind and ends at once: nothing is left to wait for.
int Run(QByteArray program, int channel)
{
    const SpawnSettings settings(channel);
    std::array<char*, 2> arguments{program.data(), nullptr};
    pid_t process = -1;
    const int error = ::posix_spawn(&process, program.constData(), &settings.actions, &settings.attributes,
                                    arguments.data(), environ);
    while (error == 0 && ::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
    return error;
}

} // namespace

QByteArray FindGuardProgram()
{
    const char* named = ::secure_getenv(GuardVariable);
    if (named != nullptr) {
        return named;
    }
    const QDir here = QFileInfo(ThisFile()).dir();
    const QString fromPrograms = here.filePath(QStringLiteral(VESMAR_GUARD_FROM_PROGRAMS));
    const QString fromLibraries = here.filePath(QStringLiteral(VESMAR_GUARD_FROM_LIBRARIES));
    return QFile::encodeName(QFileInfo::exists(fromPrograms) ? fromPrograms : fromLibraries);
}

GuardStart StartGuard()
{
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return {-1, errno};
    }
    ::setsockopt(ends[0], SOL_SOCKET, SO_RCVTIMEO, &AnswerTime, sizeof(AnswerTime));
    const int error = Run(FindGuardProgram(), ends[1]);
    ::close(ends[1]);
    if (error != 0) {
        ::close(ends[0]);
        return {-1, error};
    }
    return {ends[0], ETIMEDOUT};
}

} // namespace VesmarClient
