#pragma once

#include <QString>
#include <QVector>

#include <sys/stat.h>
#include <sys/types.h>

namespace Cli
{

/// A program that has a device open.
struct DeviceHolder {
    pid_t process;
    QString program; ///< As it calls itself, printable.
};

/// The programs that hold a device.
struct DeviceHolders {
    QVector<DeviceHolder> programs;
    bool isComplete = false; ///< False where programs of other users may hold it unseen.
};

/// Who holds the character device, beside this program and, for a pseudo-terminal, the program at its other
/// end.
DeviceHolders FindHolders(const struct stat& device);

} // namespace Cli
