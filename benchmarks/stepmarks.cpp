#include "stepmarks.h"

#include <sys/resource.h>
#include <time.h>

#include <cstddef>
#include <mutex>

#include "support/systemfunction.h"

namespace
{

constexpr long ShortestPauseNs = 100'000'000;
constexpr size_t Capacity = 100'000;

struct Marks {
    Marks() { list.reserve(Capacity); } // So that a mark allocates nothing.

    std::mutex mutex;
    std::vector<StepMarks::Mark> list;
};

Marks& Driver()
{
    static auto* const marks = new Marks;
    return *marks;
}

Marks& Bare()
{
    static auto* const marks = new Marks;
    return *marks;
}

thread_local bool isBare = false;
thread_local long allocations = 0;

double ProcessorUs()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) * 1e-3;
}

void MarkPause(const timespec* pause)
{
    if (pause->tv_sec == 0 && pause->tv_nsec < ShortestPauseNs) {
        return;
    }
    Marks& marks = isBare ? Bare() : Driver();
    const std::lock_guard<std::mutex> lock(marks.mutex);
    marks.list.push_back(
        {std::chrono::steady_clock::now(), ProcessorUs(), StepMarks::WakeUps(), allocations});
}

std::vector<StepMarks::Mark> Copy(Marks& marks)
{
    const std::lock_guard<std::mutex> lock(marks.mutex);
    return marks.list;
}

} // namespace

std::vector<StepMarks::Mark> StepMarks::OfDriver()
{
    return Copy(Driver());
}

std::vector<StepMarks::Mark> StepMarks::OfBareMachine()
{
    return Copy(Bare());
}

void StepMarks::MarkAsBare()
{
    isBare = true;
}

long StepMarks::WakeUps()
{
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

// These take the place of the C library's for the whole program, whatever library calls them.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name, bugprone-reserved-identifier)
extern "C" {

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);

__attribute__((visibility("default"))) void* malloc(size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

__attribute__((visibility("default"))) void* calloc(size_t count, size_t size)
{
    ++allocations;
    return __libc_calloc(count, size);
}

__attribute__((visibility("default"))) void* realloc(void* block, size_t size)
{
    ++allocations;
    return __libc_realloc(block, size);
}

__attribute__((visibility("default"))) int nanosleep(const timespec* pause, timespec* rest)
{
    static auto* const systemSleep = SystemFunction<int(const timespec*, timespec*)>("nanosleep");
    MarkPause(pause);
    return systemSleep(pause, rest);
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name, bugprone-reserved-identifier)
