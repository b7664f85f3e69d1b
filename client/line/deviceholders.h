#pragma once

#include <QString>
#include <QVector>

#include <sys/stat.h>
#include <sys/types.h>

namespace VesmarClient
{

/// A program that has a device open.
struct DeviceHolder {
    pid_t process;
    QString program; ///< As it calls itself, whatever characters that has.
};

/// The programs that hold a device.
struct DeviceHolders {
    QVector<DeviceHolder> programs;
    bool isComplete = false; ///< False where a program of another user may hold it unseen.
};

/// Who holds the character device. This program does not count, nor does, for a pseudo-terminal, the program
/// at its other end.
DeviceHolders FindHolders(const struct stat& device);

} // namespace VesmarClient
