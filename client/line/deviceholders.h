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

/// What the process calls itself; empty where there is none.
QString ProgramName(pid_t process);

/// Which program has locked the device, as a list of one. Empty where that cannot be seen, and where that
/// program has ended and the lock lives on in another one.
QVector<DeviceHolder> FindLockHolders(const struct stat& device);

/// "picocom (process 4711)", with control characters made visible.
QString ShowHolder(const DeviceHolder& holder);
/// The first few of at least one, and the number of the others.
QString ShowHolders(const QVector<DeviceHolder>& holders);

/// Who holds the character device. This program does not count, nor does, for a pseudo-terminal, the program
/// at its other end.
DeviceHolders FindHolders(const struct stat& device);

/// Keeps the programs that this one starts from inheriting what it has open of the device.
void KeepFromPrograms(const struct stat& device);

} // namespace VesmarClient
