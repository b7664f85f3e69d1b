#include "client/line/serialline.h"

#include <atomic>

#include <Vesmar/serialdevice.h>

#include "client/line/device.h"
#include "client/line/deviceholders.h"
#include "client/words/translation.h"

namespace VesmarClient
{

namespace
{

/// Whether an instrument of this process has the line: the driver exists only once.
std::atomic<bool> isInUse{false};

Failure InUse()
{
    Failure failure;
    failure.name = QStringLiteral("in-use");
    failure.whatHappened =
        Translated(QT_TRANSLATE_NOOP("VesmarClient", "This application has the instrument open already."));
    failure.nextStep =
        Translated(QT_TRANSLATE_NOOP("VesmarClient", "Create one instrument, and use it alone."));
    return failure;
}

bool IsSame(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino && one.st_rdev == other.st_rdev &&
           one.st_ctim.tv_sec == other.st_ctim.tv_sec && one.st_ctim.tv_nsec == other.st_ctim.tv_nsec;
}

} // namespace

SerialLine::~SerialLine()
{
    GiveBack();
}

Failure SerialLine::Take()
{
    if (isInUse.exchange(true)) {
        return InUse();
    }
    Failure failure = _lock.Lock();
    if (failure.isFailure()) {
        isInUse = false;
    } else {
        _device = Device(Vesmar::SerialDevicePath).Findings().identity;
    }
    return failure;
}

void SerialLine::GiveBack()
{
    if (IsTaken()) {
        _lock.Release();
        isInUse = false;
    }
}

bool SerialLine::IsReplaced() const
{
    const Device present(Vesmar::SerialDevicePath);
    return present.Descriptor() >= 0 && !IsSame(present.Findings().identity, _device);
}

void EnableDriver(Vesmar::Tester& tester)
{
    tester.Enable();
    KeepFromPrograms(Device(Vesmar::SerialDevicePath).Findings().identity);
}

} // namespace VesmarClient
