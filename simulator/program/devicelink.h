#pragma once

#include <QString>

namespace Simulator
{

/// A symbolic link by which programs find the instrument's line. The destructor removes it.
class DeviceLink
{
public:
    /// Replaces a link that was left over. Throws std::runtime_error when the link cannot be created.
    DeviceLink(const QString& path, const QString& devicePath);
    ~DeviceLink();
    DeviceLink(const DeviceLink&) = delete;
    DeviceLink(DeviceLink&&) = delete;
    DeviceLink& operator=(const DeviceLink&) = delete;
    DeviceLink& operator=(DeviceLink&&) = delete;

    /// Points the link to a line that came back under another path. An empty path removes the link.
    void PointTo(const QString& devicePath);

private:
    void RemoveOwn() const;

    QString _path;
    QString _devicePath;
};

} // namespace Simulator
