#include "soak/pseudoterminal.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "support/systemfunction.h"

namespace
{

/// The system carries bytes from one end to the other on a thread of its own.
constexpr int LongestWayMs = 1000;

int OpenSlave(const std::string& path)
{
    return open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
}

void AwaitArrival(int descriptor)
{
    pollfd arrival{descriptor, POLLIN, 0};
    poll(&arrival, 1, LongestWayMs);
}

} // namespace

PseudoTerminal::PseudoTerminal() : _master(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
{
    if (_master < 0 || grantpt(_master) != 0 || unlockpt(_master) != 0) {
        throw std::runtime_error("no pseudo-terminal can be opened");
    }
    _slave = ptsname(_master);
    const int kept = OpenSlave(_slave); // The line stays as it is while the driver does not have it open.
    termios settings{};
    cfmakeraw(&settings);
    tcsetattr(kept, TCSANOW, &settings);
}

int PseudoTerminal::Open()
{
    return OpenSlave(_slave);
}

QByteArray PseudoTerminal::Write(int descriptor, const QByteArray& bytes)
{
    static auto* const systemWrite = SystemFunction<ssize_t(int, const void*, size_t)>("write");
    const auto size = static_cast<size_t>(bytes.size());
    systemWrite(descriptor, bytes.constData(), size);
    AwaitArrival(_master);
    QByteArray received(bytes.size(), '\0');
    received.truncate(static_cast<int>(std::max<ssize_t>(read(_master, received.data(), size), 0)));
    return received;
}

long PseudoTerminal::Read(int descriptor, const QByteArray& arrived, char* buffer, std::size_t size)
{
    static auto* const systemRead = SystemFunction<ssize_t(int, void*, size_t)>("read");
    if (!arrived.isEmpty()) {
        [[maybe_unused]] const auto written =
            write(_master, arrived.constData(), static_cast<size_t>(arrived.size()));
        AwaitArrival(descriptor);
    }
    return systemRead(descriptor, buffer, size);
}
