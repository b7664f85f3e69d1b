#include "storm/serialline.h"

#include <fcntl.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <ctime>
#include <utility>

#include <QMutex>

#include "support/systemfunction.h"
#include "support/wire.h"
#include "virtualtime/virtualtime.h"

namespace
{

using std::chrono::microseconds;
using std::chrono::milliseconds;

constexpr const char* DevicePath = "/dev/ttycommunication";
constexpr int CleanExchangesUntilCalm = 3;
constexpr milliseconds LongestRequest{5}; ///< Bytes that are older belong to another request.

/// Uses up one of the calls that are to fail.
bool Consume(int& count)
{
    if (count == 0) {
        return false;
    }
    --count;
    return true;
}

} // namespace

bool Trouble::IsActive(Nanoseconds now) const
{
    const int calls = failingReads + interruptedReads + failingWrites + interruptedWrites + shortWrites +
                      failingDrains + interruptedDrains + failingOpens + interruptedOpens + failingSettings +
                      interruptedSettings + cutSleeps + locksUntilPreemption;
    return calls > 0 || stall.count() > 0 ||
           now <= std::max({hungUpUntil, goneUntil, unreadUntil, babblesUntil});
}

std::vector<Chunk>& Exchange::Answer()
{
    if (!_isDone) {
        _isDone = true;
        _answer = _instrument.Answer(request, now);
    }
    return _answer;
}

SerialLine& SerialLine::Get()
{
    static auto* const line = new SerialLine;
    return *line;
}

std::unique_lock<std::recursive_mutex> SerialLine::Lock()
{
    static std::recursive_mutex mutex;
    return std::unique_lock(mutex);
}

void SerialLine::Connect(Instrument& instrument, Random& random)
{
    const auto keptHook = std::move(onRequest);
    Terminal* const keptTerminal = _terminal;
    *this = SerialLine();
    onRequest = keptHook;
    _terminal = keptTerminal;
    _instrument = &instrument;
    _random = &random;
    _lastByte = VirtualTime::Now();
}

void SerialLine::EndTrouble()
{
    trouble = Trouble();
    _incoming.clear();
    _cleanExchanges = 0;
}

bool SerialLine::IsCalm() const
{
    return !trouble.IsActive(VirtualTime::Now()) && _cleanExchanges >= CleanExchangesUntilCalm;
}

void SerialLine::RecordStall()
{
    const auto lock = Lock();
    _lastStall = VirtualTime::Now();
    _cleanExchanges = 0;
}

int SerialLine::Fail(int error) const
{
    errno = error;
    return -1;
}

Nanoseconds SerialLine::LastStall() const
{
    const auto lock = Lock();
    return _lastStall;
}

bool SerialLine::IsPreempted() const
{
    const auto lock = Lock();
    return VirtualTime::Now() < _preemptedUntil;
}

bool SerialLine::IsOpen() const
{
    const auto lock = Lock();
    return _descriptor >= 0;
}

bool SerialLine::Owns(int descriptor) const
{
    const auto lock = Lock();
    return descriptor == _descriptor && IsOpen();
}

void SerialLine::Close()
{
    const auto lock = Lock();
    _descriptor = -1;
}

int SerialLine::Open()
{
    const auto lock = Lock();
    if (Consume(trouble.interruptedOpens)) {
        return Fail(EINTR);
    }
    if (Consume(trouble.failingOpens) || VirtualTime::Now() < trouble.goneUntil) {
        return Fail(ENOENT);
    }
    _descriptor = HasTerminal() ? _terminal->Open() : eventfd(0, EFD_CLOEXEC);
    return _descriptor;
}

int SerialLine::Flush()
{
    const auto lock = Lock();
    const Nanoseconds now = VirtualTime::Now();
    const auto hasArrived = [now](const Chunk& chunk) { return chunk.due <= now; };
    _incoming.erase(std::remove_if(_incoming.begin(), _incoming.end(), hasArrived), _incoming.end());
    return 0;
}

void SerialLine::Babble()
{
    const Nanoseconds now = VirtualTime::Now();
    if (now > trouble.babblesUntil) {
        return;
    }
    for (_babbled = std::max(_babbled, now - milliseconds(1)); _babbled < now;
         _babbled += microseconds(200)) {
        _incoming.push_front({_babbled, _random->Bytes(2)});
    }
}

long SerialLine::Read(char* buffer, std::size_t size)
{
    const auto lock = Lock();
    const Nanoseconds now = VirtualTime::Now();
    if (Consume(trouble.interruptedReads)) {
        return Fail(EINTR);
    }
    if (Consume(trouble.failingReads) || now < trouble.goneUntil) {
        return Fail(EIO);
    }
    if (now < trouble.hungUpUntil) {
        return 0;
    }
    Babble();
    QByteArray arrived;
    for (auto each = _incoming.begin(); each != _incoming.end() && arrived.size() < static_cast<int>(size);) {
        if (each->due > now) {
            ++each;
            continue;
        }
        const int count = std::min(each->bytes.size(), static_cast<int>(size) - arrived.size());
        arrived += each->bytes.left(count);
        each->bytes.remove(0, count);
        each = each->bytes.isEmpty() ? _incoming.erase(each) : std::next(each);
    }
    _bytesRead += arrived.size();
    _lastByte = arrived.isEmpty() ? _lastByte : now;
    if (HasTerminal()) {
        return _terminal->Read(_descriptor, arrived, buffer, size);
    }
    std::memcpy(buffer, arrived.constData(), static_cast<std::size_t>(arrived.size()));
    return arrived.size();
}

long SerialLine::Write(const char* bytes, std::size_t size)
{
    auto lock = Lock();
    const Nanoseconds now = VirtualTime::Now();
    _bytesRead = 0;
    if (Consume(trouble.interruptedWrites)) {
        return Fail(EINTR);
    }
    if (Consume(trouble.failingWrites) || now < std::max(trouble.goneUntil, trouble.hungUpUntil)) {
        return Fail(EIO);
    }
    if (now < trouble.unreadUntil) {
        if ((fcntl(_descriptor, F_GETFL) & O_NONBLOCK) != 0) {
            return Fail(EAGAIN);
        }
        lock.unlock();
        VirtualTime::Sleep(trouble.unreadUntil - now); // So does a write to a line that blocks.
        lock.lock();
    }
    const std::size_t count = Consume(trouble.shortWrites) ? std::max<std::size_t>(size / 2, 1) : size;
    const QByteArray written(bytes, static_cast<int>(count));
    Receive(HasTerminal() ? _terminal->Write(_descriptor, written) : written);
    return static_cast<long>(count);
}

void SerialLine::Receive(const QByteArray& bytes)
{
    const Nanoseconds now = VirtualTime::Now();
    if (_request.isEmpty() || now - _requestBegan > LongestRequest) {
        _request.clear();
        _requestBegan = now;
    }
    _request += bytes;
    constexpr int ChecksumSize = 2;
    if (_request.size() > ChecksumSize &&
        WithChecksum(_request.left(_request.size() - ChecksumSize)) == _request) {
        Deliver(std::exchange(_request, {}));
    }
}

void SerialLine::Deliver(const QByteArray& request)
{
    Exchange exchange(request, VirtualTime::Now(), *_instrument, *_random, trouble);
    const bool isFaulty = onRequest(exchange);
    const std::vector<Chunk>& answer = exchange.Answer();
    _incoming.insert(_incoming.end(), answer.begin(), answer.end());
    std::stable_sort(_incoming.begin(), _incoming.end(),
                     [](const Chunk& a, const Chunk& b) { return a.due < b.due; });
    if (isFaulty || trouble.IsActive(exchange.now)) {
        _cleanExchanges = 0;
        _faultEnds = _incoming.empty() ? exchange.now : _incoming.back().due;
    } else if (answer.empty() || answer.front().bytes == Wire::Refusal) {
        _cleanExchanges = 0; // The driver repeats the request.
    } else if (exchange.now > _faultEnds) {
        ++_cleanExchanges;
    }
}

int SerialLine::Drain()
{
    auto lock = Lock();
    if (Consume(trouble.interruptedDrains)) {
        return Fail(EINTR);
    }
    if (Consume(trouble.failingDrains)) {
        return Fail(EIO);
    }
    if (const Nanoseconds left = trouble.unreadUntil - VirtualTime::Now(); left.count() > 0) {
        lock.unlock();
        VirtualTime::Sleep(left);
    }
    return 0;
}

int SerialLine::Configure()
{
    const auto lock = Lock();
    if (Consume(trouble.interruptedSettings)) {
        return Fail(EINTR);
    }
    return Consume(trouble.failingSettings) ? Fail(EIO) : 0;
}

int SerialLine::Queued() const
{
    const auto lock = Lock();
    return VirtualTime::Now() < trouble.unreadUntil ? 1 : 0;
}

Nanoseconds SerialLine::SleepTime(Nanoseconds asked)
{
    const auto lock = Lock();
    if (trouble.stall.count() > 0) {
        const Nanoseconds longer = asked + std::exchange(trouble.stall, Nanoseconds(0));
        _lastStall = VirtualTime::Now() + longer;
        return longer;
    }
    return Consume(trouble.cutSleeps) ? -asked / 3 : asked;
}

void SerialLine::PassLock()
{
    auto lock = Lock();
    if (trouble.preempted != std::this_thread::get_id() || !Consume(trouble.locksUntilPreemption) ||
        trouble.locksUntilPreemption > 0) {
        return;
    }
    const Nanoseconds time = trouble.preemption;
    _preemptedUntil = VirtualTime::Now() + time;
    _lastStall = _preemptedUntil;
    lock.unlock();
    VirtualTime::Sleep(time);
}

namespace
{

/// What a call comes to: what the line makes of it and, where that is nothing and there is a terminal, what
/// the system does.
template <typename Call>
int OnTerminal(int result, Call call)
{
    return result == 0 && SerialLine::Get().HasTerminal() ? call() : result;
}

} // namespace

// These take the place of the C library's for the whole program, whatever library calls them.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's parameters have reserved
// names.
extern "C" {

#define TAKES_PLACE __attribute__((visibility("default")))

TAKES_PLACE int open(const char* path, int flags, ...)
{
    static auto* const systemOpen = SystemFunction<int(const char*, int, mode_t)>("open");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return std::strcmp(path, DevicePath) == 0 ? SerialLine::Get().Open() : systemOpen(path, flags, mode);
}

TAKES_PLACE int open64(const char* path, int flags, ...)
{
    static auto* const systemOpen = SystemFunction<int(const char*, int, mode_t)>("open64");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return std::strcmp(path, DevicePath) == 0 ? SerialLine::Get().Open() : systemOpen(path, flags, mode);
}

TAKES_PLACE int close(int descriptor)
{
    static auto* const systemClose = SystemFunction<int(int)>("close");
    if (SerialLine::Get().Owns(descriptor)) {
        SerialLine::Get().Close();
    }
    return systemClose(descriptor);
}

TAKES_PLACE ssize_t read(int descriptor, void* buffer, size_t size)
{
    static auto* const systemRead = SystemFunction<ssize_t(int, void*, size_t)>("read");
    SerialLine& line = SerialLine::Get();
    return line.Owns(descriptor) ? line.Read(static_cast<char*>(buffer), size)
                                 : systemRead(descriptor, buffer, size);
}

TAKES_PLACE ssize_t write(int descriptor, const void* bytes, size_t size)
{
    static auto* const systemWrite = SystemFunction<ssize_t(int, const void*, size_t)>("write");
    SerialLine& line = SerialLine::Get();
    return line.Owns(descriptor) ? line.Write(static_cast<const char*>(bytes), size)
                                 : systemWrite(descriptor, bytes, size);
}

TAKES_PLACE int tcdrain(int descriptor)
{
    static auto* const systemDrain = SystemFunction<int(int)>("tcdrain");
    const auto drain = [&] { return systemDrain(descriptor); };
    return SerialLine::Get().Owns(descriptor) ? OnTerminal(SerialLine::Get().Drain(), drain) : drain();
}

TAKES_PLACE int tcflush(int descriptor, int queue) noexcept
{
    static auto* const systemFlush = SystemFunction<int(int, int)>("tcflush");
    const auto flush = [&] { return systemFlush(descriptor, queue); };
    return SerialLine::Get().Owns(descriptor) ? OnTerminal(SerialLine::Get().Flush(), flush) : flush();
}

TAKES_PLACE int tcsetattr(int descriptor, int action, const termios* settings) noexcept
{
    static auto* const systemSettings = SystemFunction<int(int, int, const termios*)>("tcsetattr");
    const auto configure = [&] { return systemSettings(descriptor, action, settings); };
    return SerialLine::Get().Owns(descriptor) ? OnTerminal(SerialLine::Get().Configure(), configure)
                                              : configure();
}

TAKES_PLACE int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    static auto* const systemIoctl = SystemFunction<int(int, unsigned long, ...)>("ioctl");
    va_list arguments;
    va_start(arguments, request);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    if (SerialLine::Get().Owns(descriptor) && request == TIOCOUTQ) {
        const int queued = SerialLine::Get().Queued();
        *static_cast<int*>(argument) = queued;
        return queued > 0 ? 0 : OnTerminal(0, [&] { return systemIoctl(descriptor, request, argument); });
    }
    return systemIoctl(descriptor, request, argument);
}

TAKES_PLACE int usleep(useconds_t asked)
{
    const Nanoseconds time = SerialLine::Get().SleepTime(microseconds(asked));
    VirtualTime::Sleep(time.count() < 0 ? -time : time);
    if (time.count() < 0) {
        errno = EINTR;
        return -1;
    }
    return 0;
}

TAKES_PLACE int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    static auto* const systemTime = SystemFunction<int(clockid_t, timespec*)>("clock_gettime");
    const int result = systemTime(clock, time);
    if (clock == CLOCK_REALTIME) {
        const auto lock = SerialLine::Lock();
        time->tv_sec += static_cast<time_t>(SerialLine::Get().trouble.clockOffsetSeconds);
    }
    return result;
}

} // extern "C"

/// Every look at a cell of the driver begins here.
TAKES_PLACE void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static auto* const systemLock = SystemFunction<void(QMutex*)>("_ZN6QMutex4lockEv");
    SerialLine::Get().PassLock();
    systemLock(this);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
