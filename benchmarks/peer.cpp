#include "peer.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "support/wire.h"

namespace
{

/// Ends the thread; no request begins with it.
constexpr char Farewell = '\x01';

constexpr int Prepared = 4;
constexpr int Running = 7;
constexpr int StartTestPassed = 14;

size_t SizeOf(char code)
{
    switch (code) {
    case 'F':
        return 515;
    case 'P':
        return 11;
    case 'Z':
        return 5;
    case 'x':
        return 4;
    default:
        return 3;
    }
}

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

Peer::Peer(std::chrono::microseconds delay)
    : _delay(delay), _master(OpenMaster()), _slave(OpenSlave(_master)), _thread([this] { Run(); })
{
}

Peer::~Peer()
{
    [[maybe_unused]] const auto written = write(_slave, &Farewell, 1);
    _thread.join();
    close(_slave);
    close(_master);
}

QByteArray Peer::DevicePath() const
{
    return ptsname(_master);
}

void Peer::GiveReadings()
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _hasReadings = true;
}

void Peer::Observe(Observer observer)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _observer = std::move(observer);
}

int Peer::Count(char code) const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _counts.at(static_cast<size_t>(code));
}

Peer::Clock::time_point Peer::Arrival(char code) const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _arrivals.at(static_cast<size_t>(code));
}

Peer::Clock::time_point Peer::ReadingsSent() const
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return _readingsSent;
}

void Peer::Run()
{
    while (const char code = Receive()) {
        Record(code);
        const QByteArray answer = AnswerTo(code);
        std::this_thread::sleep_for(_delay);
        if (code == 'e') {
            const std::lock_guard<std::mutex> lock(_mutex);
            _readingsSent = Clock::now();
        }
        [[maybe_unused]] const auto written =
            write(_master, answer.constData(), static_cast<size_t>(answer.size()));
    }
}

char Peer::Receive()
{
    std::array<char, 1024> buffer{};
    size_t received = 0;
    do {
        pollfd arrival{_master, POLLIN, 0}; // Unlike a read, a poll can wait in virtual time.
        poll(&arrival, 1, -1);
        const auto count = read(_master, buffer.data() + received, buffer.size() - received);
        received += count > 0 ? static_cast<size_t>(count) : 0;
        if (count <= 0 || buffer.front() == Farewell) {
            return 0;
        }
    } while (received < SizeOf(buffer.front()));
    return buffer.front();
}

void Peer::Record(char code)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    ++_counts.at(static_cast<size_t>(code));
    _arrivals.at(static_cast<size_t>(code)) = Clock::now();
    if (_observer) {
        _observer(code);
    }
}

QByteArray Peer::AnswerTo(char code)
{
    switch (code) {
    case 's':
        return Status();
    case 'W':
        return Wire::Version;
    case 'R':
        return Wire::CurrentDate;
    case 'T':
        return Wire::CalibrationDate;
    case 'e':
        return Wire::SixReadings;
    case 'V':
        return Wire::UpdateInitialized;
    case 'P':
        _function = 2;
        _state = Prepared;
        break;
    case 'S':
        _state = Running;
        break;
    case 'h':
        _function = 0;
        break;
    case 'x':
        _mode = 3;
        break;
    default:
        break;
    }
    return Wire::Acknowledge;
}

QByteArray Peer::Status() const
{
    if (_function == 0 && _mode == 0) {
        return Wire::IdleStatus;
    }
    const std::lock_guard<std::mutex> lock(_mutex);
    const bool isNew = _hasReadings && _state == Running;
    return Wire::Status(_function, _function == 0 ? StartTestPassed : _state, isNew, Wire::NoError, _mode);
}
