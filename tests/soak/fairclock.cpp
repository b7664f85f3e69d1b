#include "soak/fairclock.h"

#include <algorithm>
#include <ctime>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "storm/serialline.h"
#include "virtualtime/virtualtime.h"

namespace
{

/// The driver's own time limits are those of the real clock. Whoever is held up for longer may miss one.
constexpr std::chrono::milliseconds LongestHeldUp{100};

/// What a thread has used.
struct Usage {
    Nanoseconds time;
    Nanoseconds processor;
};

std::mutex mutex;
Nanoseconds heldUp{0};
Nanoseconds sleepEnds = Nanoseconds::max(); ///< When the worker's present sleep ought to be over.
const std::thread::id Application = std::this_thread::get_id();
thread_local std::optional<Usage> lastUsage;

Nanoseconds Read(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + Nanoseconds(time.tv_nsec);
}

Usage PresentUsage()
{
    return {Read(CLOCK_MONOTONIC), Read(CLOCK_THREAD_CPUTIME_ID)};
}

void SleepUntil(Nanoseconds time)
{
    const auto whole = std::chrono::duration_cast<std::chrono::seconds>(time);
    const timespec end{static_cast<time_t>(whole.count()), static_cast<long>((time - whole).count())};
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &end, nullptr) != 0) {
    }
}

/// The worker runs, and has lost this time.
void Add(Nanoseconds lost)
{
    {
        const std::lock_guard lock(mutex);
        sleepEnds = Nanoseconds::max();
        heldUp += std::max(lost, Nanoseconds(0));
    }
    if (lost > LongestHeldUp) {
        SerialLine::Get().RecordStall();
    }
}

bool IsWorker()
{
    return std::this_thread::get_id() != Application;
}

/// Counts what the worker has lost since its last sleep, or since it last came here.
void CountLost()
{
    const Usage now = PresentUsage();
    const Usage before = std::exchange(lastUsage, now).value_or(now);
    Add(now.time - before.time - (now.processor - before.processor));
}

void SleepAsWorker(Nanoseconds time)
{
    CountLost();
    const Nanoseconds end = Read(CLOCK_MONOTONIC) + time;
    {
        const std::lock_guard lock(mutex);
        sleepEnds = end;
    }
    SleepUntil(end);
    lastUsage = PresentUsage();
    Add(lastUsage->time - end);
}

} // namespace

Nanoseconds FairClock::HeldUp()
{
    const std::lock_guard lock(mutex);
    return heldUp + std::max(Read(CLOCK_MONOTONIC) - sleepEnds, Nanoseconds(0));
}

Nanoseconds VirtualTime::Now()
{
    if (IsWorker()) {
        CountLost();
    }
    return Read(CLOCK_MONOTONIC) - FairClock::HeldUp();
}

void VirtualTime::Sleep(Nanoseconds time)
{
    if (IsWorker()) {
        SleepAsWorker(time);
    } else {
        SleepUntil(Read(CLOCK_MONOTONIC) + time);
    }
}

// Qt's sleeps end here. This takes the place of the C library's for the whole program.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library's parameters have reserved
// names.
extern "C" __attribute__((visibility("default"))) int nanosleep(const timespec* time, timespec* /*remaining*/)
{
    VirtualTime::Sleep(std::chrono::seconds(time->tv_sec) + Nanoseconds(time->tv_nsec));
    return 0;
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
