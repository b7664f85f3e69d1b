#include "client/line/linelock.h"

#include <sys/file.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include <Vesmar/serialdevice.h>

#include "client/words/translation.h"

namespace VesmarClient
{

namespace
{

/// A program that is being refused the line, or that only looks at the device, has it open for less.
constexpr int MostLooks = 10;
constexpr std::chrono::milliseconds TimeBetweenLooks{20};

QString DevicePath()
{
    return QString::fromLatin1(Vesmar::SerialDevicePath);
}

/// Of a sentence with places for the device and, where there is one, a detail.
Failure FailureOf(const char* name, const char* whatHappened, const char* nextStep,
                  const QString& detail = {})
{
    Failure failure;
    failure.name = QString::fromLatin1(name);
    failure.whatHappened = Translated(whatHappened).arg(DevicePath());
    if (!detail.isEmpty()) {
        failure.whatHappened = failure.whatHappened.arg(detail);
    }
    failure.nextStep = Translated(nextStep);
    return failure;
}

Failure NoSerialLine()
{
    return FailureOf(
        "device-unusable", QT_TRANSLATE_NOOP("VesmarClient", "%1 is no serial line."),
        QT_TRANSLATE_NOOP("VesmarClient",
                          "Let this name lead to the serial line that the instrument is wired to."));
}

/// Whether a program has asked the system to let no other one open the device, which does not stop root.
bool IsExclusive(int descriptor)
{
    int isExclusive = 0;
    return ::ioctl(descriptor, TIOCGEXCL, &isExclusive) == 0 && isExclusive != 0;
}

/// The programs that have the device open for longer than a moment.
QVector<DeviceHolder> LastingHolders(const struct stat& device)
{
    QVector<DeviceHolder> holders = FindHolders(device).programs;
    for (int look = 1; look < MostLooks && !holders.isEmpty(); ++look) {
        std::this_thread::sleep_for(TimeBetweenLooks);
        holders = FindHolders(device).programs;
    }
    return holders;
}

QVector<DeviceHolder> HoldersOfLock(const struct stat& device)
{
    const QVector<DeviceHolder> holders = FindLockHolders(device);
    return holders.isEmpty() ? FindHolders(device).programs : holders;
}

} // namespace

Failure NotOpened(int openError)
{
    switch (openError) {
    case ENOENT:
        return FailureOf(
            "device-missing", QT_TRANSLATE_NOOP("VesmarClient", "The serial device %1 does not exist."),
            QT_TRANSLATE_NOOP("VesmarClient", "Check that the board's serial line has this name."));
    case EACCES:
    case EPERM:
        return FailureOf(
            "no-permission", QT_TRANSLATE_NOOP("VesmarClient", "No permission to open the serial device %1."),
            QT_TRANSLATE_NOOP("VesmarClient",
                              "Join the group that owns it (usually: sudo usermod -a -G dialout \"$USER\") "
                              "and log in again."));
    default:
        return FailureOf("device-unusable",
                         QT_TRANSLATE_NOOP("VesmarClient", "The serial device %1 cannot be opened: %2."),
                         QT_TRANSLATE_NOOP("VesmarClient",
                                           "Check the line and its driver, and whether another program "
                                           "holds the device."),
                         qt_error_string(openError));
    }
}

Failure HeldBy(const QVector<DeviceHolder>& holders)
{
    return FailureOf(
        "device-held", QT_TRANSLATE_NOOP("VesmarClient", "The serial device %1 is held by %2."),
        QT_TRANSLATE_NOOP("VesmarClient",
                          "A measurement may be running. End that program, or wait until it has ended."),
        holders.isEmpty() ? Translated(QT_TRANSLATE_NOOP("VesmarClient", "a program that cannot be seen"))
                          : ShowHolders(holders));
}

Failure LineLock::Lock()
{
    if (IsLocked()) {
        return {};
    }
    auto device = std::make_unique<Device>(Vesmar::SerialDevicePath);
    Failure failure = Lock(*device);
    if (!failure.isFailure()) {
        _device = std::move(device);
    }
    return failure;
}

Failure LineLock::Lock(const Device& device) const
{
    const DeviceFindings& findings = device.Findings();
    if (!findings.IsThere()) {
        return NotOpened(findings.pathError);
    }
    if (!findings.IsCharacterDevice() || findings.IsNoTerminal()) {
        return NoSerialLine();
    }
    if (findings.openError != 0) {
        const QVector<DeviceHolder> holders =
            findings.openError == EBUSY ? FindHolders(findings.identity).programs : QVector<DeviceHolder>();
        return holders.isEmpty() ? NotOpened(findings.openError) : HeldBy(holders);
    }
    if (::flock(device.Descriptor(), LOCK_EX | LOCK_NB) != 0) {
        return errno == EWOULDBLOCK ? HeldBy(HoldersOfLock(findings.identity)) : NotOpened(errno);
    }
    const QVector<DeviceHolder> holders = LastingHolders(findings.identity);
    return holders.isEmpty() && !IsExclusive(device.Descriptor()) ? Failure() : HeldBy(holders);
}

} // namespace VesmarClient
