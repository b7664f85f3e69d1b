#include "virtualtime/ptytraffic.h"

#include <dlfcn.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <map>
#include <mutex>
#include <optional>

namespace
{

constexpr unsigned int MultiplexerMajor = 5;
constexpr unsigned int MultiplexerMinor = 2;
constexpr unsigned int FirstPtyMajor = 136;
constexpr unsigned int LastPtyMajor = 143;
constexpr unsigned int MinorsPerMajor = 256;
/// Bytes that have not arrived by then were lost, as those to an end that is closed.
constexpr int PatienceMs = 1000;

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

/// How many bytes are on their way to each end.
class Traffic
{
public:
    void Add(const End& end, ssize_t count)
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _counts[end] += count;
    }

    bool IsUnderWay(const End& end)
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        return _counts[end] > 0;
    }

    void Forget(const End& end)
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _counts.erase(end);
    }

private:
    std::mutex _mutex;
    std::map<End, ssize_t> _counts;
};

Traffic& AllTraffic()
{
    static auto* const traffic = new Traffic;
    return *traffic;
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
    using Poll = int(pollfd*, nfds_t, int);
    static auto* const systemPoll = reinterpret_cast<Poll*>(dlsym(RTLD_NEXT, "poll"));
    const auto end = EndOf(descriptor);
    if (!end || !AllTraffic().IsUnderWay(*end)) {
        return;
    }
    pollfd source{descriptor, POLLIN, 0};
    if (systemPoll(&source, 1, PatienceMs) == 0) {
        AllTraffic().Forget(*end);
    }
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
