#include "client/line/device.h"

#include <QFile>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>

namespace VesmarClient
{

namespace
{

QString LinkTarget(const char* path)
{
    std::array<char, PATH_MAX> target{};
    const ssize_t size = ::readlink(path, target.data(), target.size());
    return size > 0 ? QString::fromLocal8Bit(target.data(), static_cast<int>(size)) : QString();
}

QString OwnerName(uid_t owner)
{
    const passwd* entry = ::getpwuid(owner);
    return entry != nullptr ? QString::fromLocal8Bit(entry->pw_name) : QString::number(owner);
}

QString GroupName(gid_t number)
{
    const group* entry = ::getgrgid(number);
    return entry != nullptr ? QString::fromLocal8Bit(entry->gr_name) : QString::number(number);
}

bool IsAllowed(const char* path, int access)
{
    return ::faccessat(AT_FDCWD, path, access, AT_EACCESS) == 0;
}

} // namespace

Device::Device(const char* path)
{
    const int location = ::open(path, O_PATH | O_CLOEXEC); // identifies a device without opening it
    if (location < 0) {
        _findings.pathError = errno;
        _findings.target = LinkTarget(path);
        return;
    }
    Examine(path, location);
    ::close(location);
    if (_findings.IsCharacterDevice()) {
        Open(path);
    }
}

Device::~Device()
{
    if (_descriptor >= 0) {
        ::close(_descriptor);
    }
}

void Device::Examine(const char* path, int location)
{
    if (::fstat(location, &_findings.identity) != 0) {
        _findings.pathError = errno;
        return;
    }
    const QByteArray whereItIs = "/proc/self/fd/" + QByteArray::number(location);
    const QString target = LinkTarget(whereItIs.constData());
    _findings.target = target.isEmpty() ? QFile::decodeName(path) : target;
    _findings.owner = OwnerName(_findings.identity.st_uid);
    _findings.group = GroupName(_findings.identity.st_gid);
    _findings.isReadable = IsAllowed(whereItIs.constData(), R_OK);
    _findings.isWritable = IsAllowed(whereItIs.constData(), W_OK);
}

void Device::Open(const char* path)
{
    _descriptor = ::open(path, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    _findings.openError = _descriptor < 0 ? errno : 0;
    _findings.isTerminal = _descriptor >= 0 && ::isatty(_descriptor) != 0;
}

} // namespace VesmarClient
