#include "simulator/line/ptyline.h"

#include <fcntl.h>
#include <termios.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include <QFile>

namespace Simulator
{

namespace
{

void Require(bool done, const char* what)
{
    if (!done) {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

int OpenMaster()
{
    const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    Require(master >= 0, "no pseudo-terminal");
    return master;
}

QString UnlockedDevicePath(int master)
{
    Require(::grantpt(master) == 0 && ::unlockpt(master) == 0, "pseudo-terminal cannot be used");
    char path[64];
    errno = ::ptsname_r(master, path, sizeof(path));
    Require(errno == 0, "pseudo-terminal has no name");
    return QFile::decodeName(path);
}

int OpenRawSlave(const QString& path)
{
    const int slave = ::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    Require(slave >= 0, "pseudo-terminal cannot be opened");
    termios settings{};
    ::cfmakeraw(&settings);
    settings.c_cflag |= CREAD | CLOCAL;
    settings.c_cc[VMIN] = 1;
    ::cfsetspeed(&settings, B115200);
    ::tcsetattr(slave, TCSANOW, &settings);
    return slave;
}

} // namespace

PtyLine::PtyLine()
    : _master(OpenMaster()), _devicePath(UnlockedDevicePath(_master.Get())), _slave(OpenRawSlave(_devicePath))
{
}

QString PtyLine::DevicePath() const
{
    return _devicePath;
}

QByteArray PtyLine::Read()
{
    QByteArray bytes(1024, Qt::Uninitialized);
    const ssize_t count = ::read(_master.Get(), bytes.data(), static_cast<std::size_t>(bytes.size()));
    bytes.truncate(count > 0 ? static_cast<int>(count) : 0);
    return bytes;
}

void PtyLine::Write(const QByteArray& bytes)
{
    ssize_t offset = 0;
    while (offset < bytes.size()) {
        const ssize_t count = ::write(_master.Get(), bytes.constData() + offset,
                                      static_cast<std::size_t>(bytes.size() - offset));
        if (count <= 0) {
            return;
        }
        offset += count;
    }
}

int PtyLine::Handle() const
{
    return _master.Get();
}

} // namespace Simulator
