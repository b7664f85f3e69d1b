#include "virtualtime/ptytraffic.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <ctime>
#include <map>
#include <mutex>
#include <optional>

#include "support/systemfunction.h"

namespace
{

constexpr unsigned int MultiplexerMajor = 5;
constexpr unsigned int MultiplexerMinor = 2;
constexpr unsigned int FirstPtyMajor = 136;
constexpr unsigned int LastPtyMajor = 143;
constexpr unsigned int MinorsPerMajor = 256;
/// An end holds no more than so many bytes at a time. Once it is full, more come when fewer than so many are
/// left.
constexpr ssize_t MostThatWait = 4095;
constexpr ssize_t FewAreLeft = 128;
constexpr timespec BetweenLooks{0, 10000};
/// Bytes that have not arrived by then, a second at least later, were lost, as those to an end that is
/// closed.
constexpr int MostLooks = 20000;

/// One end of a pseudo-terminal.
struct End {
    unsigned int number;
    bool isMaster;

    End Other() const { return {number, !isMaster}; }
    bool operator<(const End& other) const
    {
        return number != other.number ? number < other.number : isMaster < other.isMaster;
    }
};

std::optional<End> EndOf(int descriptor)
{
    struct stat file = {};
    if (fstat(descriptor, &file) != 0 || !S_ISCHR(file.st_mode)) {
        return {};
    }
    if (file.st_rdev == makedev(MultiplexerMajor, MultiplexerMinor)) {
        unsigned int number = 0;
        return ioctl(descriptor, TIOCGPTN, &number) == 0 ? std::optional<End>({number, true}) : std::nullopt;
    }
    const unsigned int major = major(file.st_rdev);
    if (major < FirstPtyMajor || major > LastPtyMajor) {
        return {};
    }
    return End{(major - FirstPtyMajor) * MinorsPerMajor + minor(file.st_rdev), false};
}

/// What is on its way to an end.
struct Backlog {
    ssize_t count = 0;
    bool isHeldUp = false; ///< The end was full.
};

/// What is on its way to each end.
class Traffic
{
public:
    void Add(const End& end, ssize_t count)
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _backlogs[end].count += count;
    }

    Backlog To(const End& end)
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        return _backlogs[end];
    }

    void HoldUp(const End& end, bool isHeldUp)
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _backlogs[end].isHeldUp = isHeldUp;
    }

    void Forget(const End& end)
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _backlogs.erase(end);
    }

private:
    std::mutex _mutex;
    std::map<End, Backlog> _backlogs;
};

Traffic& AllTraffic()
{
    static auto* const traffic = new Traffic;
    return *traffic;
}

/// Whether so many bytes can be read, or nothing more comes because the other end is closed.
bool HaveArrived(int descriptor, ssize_t count)
{
    static auto* const systemIoctl = SystemFunction<int(int, unsigned long, ...)>("ioctl");
    static auto* const systemPoll = SystemFunction<int(pollfd*, nfds_t, int)>("poll");
    int waiting = 0;
    pollfd source{descriptor, POLLIN, 0};
    return systemIoctl(descriptor, FIONREAD, &waiting) != 0 || waiting >= count ||
           (systemPoll(&source, 1, 0) != 0 && (source.revents & POLLHUP) != 0);
}

} // namespace

namespace PtyTraffic
{

void Written(int descriptor, ssize_t count)
{
    if (const auto end = EndOf(descriptor); end && count > 0) {
        AllTraffic().Add(end->Other(), count);
    }
}

void Received(int descriptor, ssize_t count)
{
    if (const auto end = EndOf(descriptor); end && count > 0) {
        AllTraffic().Add(*end, -count);
    }
}

void AwaitArrival(int descriptor)
{
    static auto* const systemSleep = SystemFunction<int(const timespec*, timespec*)>("nanosleep");
    const auto end = EndOf(descriptor);
    if (!end) {
        return;
    }
    const Backlog backlog = AllTraffic().To(*end);
    if (backlog.count <= 0 || (backlog.isHeldUp && HaveArrived(descriptor, FewAreLeft))) {
        return;
    }
    const ssize_t count = std::min(backlog.count, MostThatWait);
    for (int looks = 0; !HaveArrived(descriptor, count); ++looks) {
        if (looks == MostLooks) {
            AllTraffic().Forget(*end);
            return;
        }
        systemSleep(&BetweenLooks, nullptr);
    }
    AllTraffic().HoldUp(*end, backlog.count > count);
}

void Forget(int descriptor)
{
    if (const auto end = EndOf(descriptor)) {
        AllTraffic().Forget(*end);
    }
}

void Close(int descriptor)
{
    const auto end = EndOf(descriptor);
    if (end && end->isMaster) {
        AllTraffic().Forget(*end);
        AllTraffic().Forget(end->Other());
    }
}

} // namespace PtyTraffic
