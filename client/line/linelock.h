#pragma once

#include <memory>

#include <VesmarClient/failure.h>

#include "client/line/device.h"
#include "client/line/deviceholders.h"

namespace VesmarClient
{

/// Keeps the serial line for this object alone. To be locked before the driver opens the line, and to be
/// released after the driver has closed it.
///
/// The lock is `flock` on the device, with which other programs for serial lines agree. A program that has
/// the device open without it holds the line as well. Nothing is sent, and no setting of the device is
/// changed. Programs that are started meanwhile do not inherit the lock, and it ends with this process.
class LineLock
{
public:
    /// Locks the line. Empty where that was done, otherwise the failure "device-held", which names the
    /// holder, "device-missing", "no-permission" or "device-unusable". Waits a moment for a program that only
    /// looks at the device.
    Failure Lock();
    /// Gives the line back. Does nothing where it is not locked.
    void Release() { _device.reset(); }
    bool IsLocked() const { return _device != nullptr; }

private:
    Failure Lock(const Device& device) const;

    std::unique_ptr<Device> _device; ///< Null while the line is not locked.
};

/// Why the serial device cannot be opened.
Failure NotOpened(int openError);

/// The line is held by these programs, or by one that cannot be seen where there is none.
Failure HeldBy(const QVector<DeviceHolder>& holders);

} // namespace VesmarClient
