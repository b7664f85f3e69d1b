#include "simulator/program/devicelink.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <QFile>
#include <QFileInfo>

namespace Simulator
{

namespace
{

/// The link of a simulator that was killed leads nowhere, or by chance to the line that this simulator was
/// given.
bool IsLeftOver(const QString& path, const QString& devicePath)
{
    const QFileInfo present(path);
    return present.isSymLink() && (!present.exists() || present.symLinkTarget() == devicePath);
}

void CreateLink(const QString& path, const QString& devicePath)
{
    if (::symlink(QFile::encodeName(devicePath).constData(), QFile::encodeName(path).constData()) == 0) {
        return;
    }
    const QString reason = errno == EEXIST ? QStringLiteral("it exists; remove it or choose another path")
                                           : QString::fromLocal8Bit(std::strerror(errno));
    throw std::runtime_error(QStringLiteral("cannot create the link %1: %2").arg(path, reason).toStdString());
}

} // namespace

DeviceLink::DeviceLink(const QString& path, const QString& devicePath) : _path(path), _devicePath(devicePath)
{
    if (IsLeftOver(path, devicePath)) {
        QFile::remove(path);
    }
    CreateLink(path, devicePath);
}

DeviceLink::~DeviceLink()
{
    RemoveOwn();
}

void DeviceLink::PointTo(const QString& devicePath)
{
    if (devicePath == _devicePath) {
        return;
    }
    RemoveOwn();
    if (!devicePath.isEmpty()) {
        CreateLink(_path, devicePath);
    }
    _devicePath = devicePath;
}

void DeviceLink::RemoveOwn() const
{
    if (!_devicePath.isEmpty() && QFile::symLinkTarget(_path) == _devicePath) {
        QFile::remove(_path);
    }
}

} // namespace Simulator
