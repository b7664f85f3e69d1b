#pragma once

#include <sys/stat.h>

#include <Vesmar/tester.h>

#include <VesmarClient/failure.h>

#include "client/line/linelock.h"

namespace VesmarClient
{

/// The serial line as the driver uses it: taken by one program, and by one instrument of it, at a time. To be
/// taken before the driver opens the device, and to be given back after the driver has closed it.
class SerialLine
{
public:
    SerialLine() = default;
    ~SerialLine();
    SerialLine(const SerialLine&) = delete;
    SerialLine& operator=(const SerialLine&) = delete;

    /// Empty where the line has been taken, otherwise why it cannot be.
    Failure Take();
    void GiveBack();
    bool IsTaken() const { return _lock.IsLocked(); }
    /// Whether another device is where the one was that has been taken, such as an adapter that was plugged
    /// in again.
    bool IsReplaced() const;

private:
    LineLock _lock;
    struct stat _device = {};
};

/// Enables the driver, which opens the device. Programs that are started later would inherit that, and hold
/// the line for as long as they run: they are kept from it.
void EnableDriver(Vesmar::Tester& tester);

} // namespace VesmarClient
