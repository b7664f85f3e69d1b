#include <VesmarClient/serialdevice.h>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include <Vesmar/serialdevice.h>

#include "client/line/linelock.h"

namespace VesmarClient
{

QString SerialDevice::path()
{
    return QString::fromLatin1(Vesmar::SerialDevicePath);
}

Failure SerialDevice::problem()
{
    const int descriptor = ::open(Vesmar::SerialDevicePath, O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return NotOpened(errno);
    }
    ::close(descriptor);
    return {};
}

} // namespace VesmarClient
