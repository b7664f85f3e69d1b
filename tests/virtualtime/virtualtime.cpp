#include "virtualtime/virtualtime.h"

#include <linux/futex.h>
#include <poll.h>
#include <pthread.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <list>
#include <memory>
#include <new>
#include <set>

#include "support/systemfunction.h"
#include "virtualtime/ptytraffic.h"

namespace
{

using Nanoseconds = std::int64_t;

constexpr Nanoseconds Never = std::numeric_limits<Nanoseconds>::max();
constexpr int All = std::numeric_limits<int>::max();
constexpr Nanoseconds PerSecond = 1'000'000'000;
constexpr Nanoseconds PerMillisecond = 1'000'000;
constexpr Nanoseconds PerMicrosecond = 1'000;
/// What a look takes that does not wait, so that one who only looks lets time go on.
constexpr Nanoseconds Glance = PerMicrosecond;
/// Virtual time begins here, so that a date looks like one: 2026-01-01 in UTC. The monotonic clock begins at
/// 1000 s, which no date can be taken for.
constexpr Nanoseconds FirstDate = 1'767'225'600 * PerSecond;
constexpr Nanoseconds FirstMonotonic = 1000 * PerSecond;

/// What the C library's syscall does. Threads whose turn has not come call it too, so that it must not wait
/// for whoever looks the function up.
template <typename... Arguments>
long SystemCall(long number, Arguments... arguments)
{
    static std::atomic<long (*)(long, ...)> systemCall{nullptr};
    if (systemCall == nullptr) {
        systemCall = SystemFunction<long(long, ...)>("syscall");
    }
    return systemCall.load()(number, arguments...);
}

/// What is ready now, with the bytes that are under way.
int SystemPoll(pollfd* descriptors, nfds_t count)
{
    for (nfds_t index = 0; index < count; ++index) {
        if ((descriptors[index].events & POLLIN) != 0) {
            PtyTraffic::AwaitArrival(descriptors[index].fd);
        }
    }
    static auto* const systemPoll = SystemFunction<int(pollfd*, nfds_t, int)>("poll");
    return systemPoll(descriptors, count, 0);
}

/// A thread that does not run: it waits for a moment, for somebody who wakes those at an address, or for a
/// descriptor; or it could go on, and waits for its turn.
struct Waiter {
    Nanoseconds deadline = Never;
    const void* address = nullptr;
    pollfd* descriptors = nullptr;
    nfds_t descriptorCount = 0;
    bool wasWoken = false;       ///< Before the deadline.
    std::atomic<int> hasTurn{0}; ///< A futex: a semaphore would tell ThreadSanitizer of the turns.

    void AwaitTurn()
    {
        while (hasTurn == 0) {
            SystemCall(SYS_futex, &hasTurn, FUTEX_WAIT_PRIVATE, 0, nullptr);
        }
    }

    void GiveTurn()
    {
        hasTurn = 1;
        SystemCall(SYS_futex, &hasTurn, FUTEX_WAKE_PRIVATE, 1);
    }
};

/// Held for a moment, and hardly ever by two. ThreadSanitizer does not see it either.
class Lock
{
public:
    explicit Lock(std::atomic_flag& flag) : _flag(flag)
    {
        while (_flag.test_and_set(std::memory_order_acquire)) {
            sched_yield();
        }
    }
    ~Lock() { _flag.clear(std::memory_order_release); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    std::atomic_flag& _flag;
};

/// Knows who waits for what. One thread runs at a time, until it waits; so every run of a program is the
/// same.
class Engine
{
public:
    Nanoseconds Now() const { return _now; }

    int ThreadCount() const { return _threadCount; }

    /// Nobody else runs until the caller waits. True if it was woken before the deadline.
    bool Wait(Waiter& waiter)
    {
        Waiter* next = nullptr;
        {
            const Lock lock(_isLocked);
            _waiting.push_back(&waiter);
            next = RemoveNext();
        }
        PassTurn(next);
        waiter.AwaitTurn();
        return waiter.wasWoken;
    }

    /// How many of those at the address were woken. They go on when it is their turn.
    int Wake(const void* address, int most)
    {
        const Lock lock(_isLocked);
        return WakeThoseAt(address, most);
    }

    /// The new thread waits for its turn. The system may give it the identity of one that has ended.
    template <typename Create>
    int BeginThread(Waiter& waiter, const pthread_t* thread, Create create)
    {
        const Lock lock(_isLocked);
        const int result = create();
        if (result == 0) {
            ++_threadCount;
            _ended.erase(*thread);
            _ready.push_back(&waiter);
        }
        return result;
    }

    void EndThread()
    {
        Waiter* next = nullptr;
        {
            const Lock lock(_isLocked);
            --_threadCount;
            _ended.insert(pthread_self());
            WakeThoseAt(AddressOf(pthread_self()), All);
            next = RemoveNext();
        }
        PassTurn(next);
    }

    void AwaitEnd(pthread_t thread)
    {
        if (_ended.count(thread) == 0) {
            Waiter waiter;
            waiter.address = AddressOf(thread);
            Wait(waiter);
        }
        _ended.erase(thread);
    }

private:
    using Place = std::list<Waiter*>::iterator;

    static const void* AddressOf(pthread_t thread) { return reinterpret_cast<const void*>(thread); }

    int WakeThoseAt(const void* address, int most)
    {
        int woken = 0;
        for (auto each = _waiting.begin(); each != _waiting.end() && woken < most;) {
            const Place place = each++;
            if ((*place)->address == address) {
                (*place)->wasWoken = true;
                _ready.splice(_ready.end(), _waiting, place);
                ++woken;
            }
        }
        return woken;
    }

    /// Nobody runs: the turn goes to the first who can go on, else to whoever can read, else time jumps to
    /// the one who waits shortest.
    Waiter* RemoveNext()
    {
        if (_ready.empty() && !MakeReaderReady() && !MoveTimeOn()) {
            return nullptr; // The program ends.
        }
        Waiter* const next = _ready.front();
        _ready.pop_front();
        return next;
    }

    /// Whoever has the turn runs at once, and may want the lock: it is not held here.
    static void PassTurn(Waiter* next)
    {
        if (next != nullptr) {
            next->GiveTurn();
        }
    }

    bool MakeReaderReady()
    {
        const Place reader = std::find_if(_waiting.begin(), _waiting.end(), [](const Waiter* each) {
            return each->descriptors != nullptr && SystemPoll(each->descriptors, each->descriptorCount) != 0;
        });
        if (reader == _waiting.end()) {
            return false;
        }
        (*reader)->wasWoken = true;
        _ready.splice(_ready.end(), _waiting, reader);
        return true;
    }

    bool MoveTimeOn()
    {
        const Place next =
            std::min_element(_waiting.begin(), _waiting.end(), [](const Waiter* left, const Waiter* right) {
                return left->deadline < right->deadline;
            });
        if (next == _waiting.end()) {
            return false;
        }
        if ((*next)->deadline == Never) {
            std::fputs("VirtualTime: all threads wait, and nobody wakes them.\n", stderr);
            std::abort();
        }
        _now = std::max(_now.load(), (*next)->deadline);
        _ready.splice(_ready.end(), _waiting, next);
        return true;
    }

    std::atomic_flag _isLocked = ATOMIC_FLAG_INIT;
    std::list<Waiter*> _waiting; ///< In the order in which they began to wait.
    std::list<Waiter*> _ready;   ///< They could go on.
    std::set<pthread_t> _ended;  ///< Threads that were not joined yet.
    std::atomic<Nanoseconds> _now{0};
    std::atomic<int> _threadCount{1};
};

/// Threads and destructors may still need it at the very end. It takes no memory of the heap, whose sanitizer
/// looks at the clock itself.
Engine& Time()
{
    alignas(Engine) static std::array<std::byte, sizeof(Engine)> place;
    static auto* const engine = new (place.data()) Engine;
    return *engine;
}

/// The event loop shall wait in poll, and the watchdog of Qt Test must not take the jumps of time for a hang.
const bool IsPrepared = [] {
    setenv("QT_NO_GLIB", "1", 1);
    setenv("QTEST_FUNCTION_TIMEOUT", "2147483647", 1);
    return true;
}();

bool IsDate(clockid_t clock)
{
    return clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE;
}

Nanoseconds FirstOf(clockid_t clock)
{
    return IsDate(clock) ? FirstDate : FirstMonotonic;
}

Nanoseconds Duration(const timespec& time)
{
    return time.tv_sec * PerSecond + time.tv_nsec;
}

/// The moment of an absolute time: dates are far above anything that the monotonic clock reaches.
Nanoseconds Moment(const timespec& time)
{
    const Nanoseconds duration = Duration(time);
    return duration - (duration >= FirstDate ? FirstDate : FirstMonotonic);
}

void SleepUntil(Nanoseconds deadline)
{
    Waiter waiter;
    waiter.deadline = deadline;
    Time().Wait(waiter);
}

int WaitForCondition(pthread_cond_t* condition, pthread_mutex_t* mutex, Nanoseconds deadline)
{
    Waiter waiter;
    waiter.address = condition;
    waiter.deadline = deadline;
    pthread_mutex_unlock(mutex);
    const bool wasWoken = Time().Wait(waiter);
    pthread_mutex_lock(mutex);
    return wasWoken ? 0 : ETIMEDOUT;
}

int Poll(pollfd* descriptors, nfds_t count, Nanoseconds timeout)
{
    if (const int ready = SystemPoll(descriptors, count); ready != 0) {
        return ready;
    }
    Waiter waiter;
    waiter.descriptors = descriptors;
    waiter.descriptorCount = count;
    waiter.deadline = timeout < 0 ? Never : Time().Now() + std::max(timeout, Glance);
    Time().Wait(waiter);
    return SystemPoll(descriptors, count);
}

long WaitOnFutex(const std::atomic<int>* word, int value, Nanoseconds deadline)
{
    if (word->load() != value) {
        errno = EAGAIN;
        return -1;
    }
    Waiter waiter;
    waiter.address = word;
    waiter.deadline = deadline;
    if (Time().Wait(waiter)) {
        return 0;
    }
    errno = ETIMEDOUT;
    return -1;
}

/// The calls that Qt and the C++ library make. Whoever is woken without need waits again.
long Futex(const std::array<long, 6>& arguments)
{
    const auto* const word = reinterpret_cast<const std::atomic<int>*>(arguments[0]);
    const auto value = static_cast<int>(arguments[2]);
    const auto* const timeout = reinterpret_cast<const timespec*>(arguments[3]);
    switch (const auto operation = static_cast<int>(arguments[1]); operation & FUTEX_CMD_MASK) {
    case FUTEX_WAIT:
        return WaitOnFutex(word, value, timeout != nullptr ? Time().Now() + Duration(*timeout) : Never);
    case FUTEX_WAIT_BITSET:
        return WaitOnFutex(word, value, timeout != nullptr ? Moment(*timeout) : Never);
    case FUTEX_WAKE:
        return Time().Wake(word, value);
    case FUTEX_WAKE_OP: // The system changes the second word. The fourth argument is a count here.
        SystemCall(SYS_futex, arguments[0], arguments[1], 0L, 0L, arguments[4], arguments[5]);
        return Time().Wake(word, value) +
               Time().Wake(reinterpret_cast<const void*>(arguments[4]), static_cast<int>(arguments[3]));
    default:
        std::fprintf(stderr, "VirtualTime: the futex operation %d is not known here.\n", operation);
        std::abort();
    }
}

/// Tells at the end of a thread that it is over, however it ends.
pthread_key_t EndOfThread()
{
    static const pthread_key_t key = [] {
        pthread_key_t created = 0;
        pthread_key_create(&created, [](void*) { Time().EndThread(); });
        return created;
    }();
    return key;
}

struct ThreadStart {
    void* (*routine)(void*);
    void* argument;
    Waiter waiter;
};

void* RunThread(void* argument)
{
    const std::unique_ptr<ThreadStart> start(static_cast<ThreadStart*>(argument));
    start->waiter.AwaitTurn();
    pthread_setspecific(EndOfThread(), &Time());
    return start->routine(start->argument);
}

} // namespace

// These take the place of the C library's for the whole program, whatever library calls them.
extern "C" {

int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    const Nanoseconds value = FirstOf(clock) + Time().Now();
    time->tv_sec = static_cast<time_t>(value / PerSecond);
    time->tv_nsec = static_cast<long>(value % PerSecond);
    return 0;
}

int gettimeofday(timeval* time, void* /*zone*/) noexcept
{
    const Nanoseconds value = FirstDate + Time().Now();
    time->tv_sec = static_cast<time_t>(value / PerSecond);
    time->tv_usec = static_cast<suseconds_t>(value % PerSecond / PerMicrosecond);
    return 0;
}

time_t time(time_t* result) noexcept
{
    const auto value = static_cast<time_t>((FirstDate + Time().Now()) / PerSecond);
    if (result != nullptr) {
        *result = value;
    }
    return value;
}

int nanosleep(const timespec* duration, timespec* /*remaining*/)
{
    SleepUntil(Time().Now() + Duration(*duration));
    return 0;
}

int clock_nanosleep(clockid_t /*clock*/, int flags, const timespec* time, timespec* /*remaining*/)
{
    SleepUntil((flags & TIMER_ABSTIME) != 0 ? Moment(*time) : Time().Now() + Duration(*time));
    return 0;
}

int usleep(useconds_t microseconds)
{
    SleepUntil(Time().Now() + microseconds * PerMicrosecond);
    return 0;
}

ssize_t read(int descriptor, void* buffer, size_t size)
{
    static auto* const systemRead = SystemFunction<ssize_t(int, void*, size_t)>("read");
    PtyTraffic::AwaitArrival(descriptor);
    const ssize_t count = systemRead(descriptor, buffer, size);
    PtyTraffic::Received(descriptor, count);
    return count;
}

ssize_t write(int descriptor, const void* bytes, size_t size)
{
    static auto* const systemWrite = SystemFunction<ssize_t(int, const void*, size_t)>("write");
    const ssize_t count = systemWrite(descriptor, bytes, size);
    PtyTraffic::Written(descriptor, count);
    return count;
}

int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    static auto* const systemIoctl = SystemFunction<int(int, unsigned long, void*)>("ioctl");
    va_list list;
    va_start(list, request);
    void* const argument = va_arg(list, void*);
    va_end(list);
    if (request == FIONREAD) {
        PtyTraffic::AwaitArrival(descriptor);
    }
    return systemIoctl(descriptor, request, argument);
}

int tcflush(int descriptor, int queue) noexcept
{
    static auto* const systemFlush = SystemFunction<int(int, int)>("tcflush");
    PtyTraffic::AwaitArrival(descriptor);
    PtyTraffic::Forget(descriptor);
    return systemFlush(descriptor, queue);
}

int close(int descriptor)
{
    static auto* const systemClose = SystemFunction<int(int)>("close");
    PtyTraffic::Close(descriptor);
    return systemClose(descriptor);
}

int poll(pollfd* descriptors, nfds_t count, int timeout)
{
    return Poll(descriptors, count, timeout * PerMillisecond);
}

int ppoll(pollfd* descriptors, nfds_t count, const timespec* timeout, const sigset_t* /*signals*/)
{
    return Poll(descriptors, count, timeout != nullptr ? Duration(*timeout) : -1);
}

int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex)
{
    return WaitForCondition(condition, mutex, Never);
}

int pthread_cond_timedwait(pthread_cond_t* condition, pthread_mutex_t* mutex, const timespec* time)
{
    return WaitForCondition(condition, mutex, Moment(*time));
}

int pthread_cond_clockwait(pthread_cond_t* condition, pthread_mutex_t* mutex, clockid_t /*clock*/,
                           const timespec* time)
{
    return WaitForCondition(condition, mutex, Moment(*time));
}

int pthread_cond_signal(pthread_cond_t* condition) noexcept
{
    Time().Wake(condition, 1);
    return 0;
}

int pthread_cond_broadcast(pthread_cond_t* condition) noexcept
{
    Time().Wake(condition, All);
    return 0;
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*routine)(void*),
                   void* argument) noexcept
{
    using Create = int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static auto* const create = SystemFunction<Create>("pthread_create");
    auto* const start = new ThreadStart{routine, argument, {}};
    return Time().BeginThread(start->waiter, thread,
                              [&] { return create(thread, attributes, RunThread, start); });
}

int pthread_join(pthread_t thread, void** result)
{
    static auto* const join = SystemFunction<int(pthread_t, void**)>("pthread_join");
    Time().AwaitEnd(thread);
    return join(thread, result);
}

long syscall(long number, ...) noexcept
{
    va_list list;
    va_start(list, number);
    std::array<long, 6> arguments{};
    for (long& argument : arguments) {
        argument = va_arg(list, long);
    }
    va_end(list);
    return number == SYS_futex ? Futex(arguments)
                               : SystemCall(number, arguments[0], arguments[1], arguments[2], arguments[3],
                                            arguments[4], arguments[5]);
}

} // extern "C"

namespace VirtualTime
{

std::chrono::nanoseconds Now()
{
    return std::chrono::nanoseconds(Time().Now());
}

void Sleep(std::chrono::nanoseconds time)
{
    SleepUntil(Time().Now() + time.count());
}

int ThreadCount()
{
    return Time().ThreadCount();
}

} // namespace VirtualTime
