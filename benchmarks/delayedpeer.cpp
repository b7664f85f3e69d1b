#include "delayedpeer.h"

#include <array>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace
{

constexpr std::array<char, 3> StatusRequest{'\x73', '\xF4', '\x4E'};
/// Normal mode, no function, no error, start test 15; and the checksum of the two bytes.
constexpr std::array<char, 4> Status{'\x00', '\xFF', '\xF0', '\x1E'};
/// Ends the serving thread; no request begins with it.
constexpr char Farewell = '\0';

int OpenMaster()
{
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) {
        throw std::runtime_error("no pseudo-terminal can be opened");
    }
    return master;
}

int OpenSlave(int master)
{
    const int slave = open(ptsname(master), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    cfmakeraw(&settings);
    tcsetattr(slave, TCSANOW, &settings);
    return slave;
}

} // namespace

DelayedPeer::DelayedPeer(std::chrono::microseconds delay)
    : _delay(delay), _master(OpenMaster()), _slave(OpenSlave(_master)), _server([this] { Serve(); })
{
}

DelayedPeer::~DelayedPeer()
{
    [[maybe_unused]] const auto written = write(_slave, &Farewell, 1);
    _server.join();
    close(_slave);
    close(_master);
}

QByteArray DelayedPeer::DevicePath() const
{
    return ptsname(_master);
}

void DelayedPeer::Serve() const
{
    size_t received = 0;
    while (true) {
        std::array<char, 64> buffer{};
        const auto count = read(_master, buffer.data(), buffer.size());
        if (count <= 0 || buffer.front() == Farewell) {
            return;
        }
        received += static_cast<size_t>(count);
        if (received < StatusRequest.size()) {
            continue;
        }
        received = 0;
        std::this_thread::sleep_for(_delay);
        [[maybe_unused]] const auto written = write(_master, Status.data(), Status.size());
    }
}
