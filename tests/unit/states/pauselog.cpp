#include "unit/states/pauselog.h"

#include <ctime>

#include "support/systemfunction.h"

namespace
{

thread_local PauseLog* currentLog = nullptr;

qint64 Milliseconds(const timespec& duration)
{
    constexpr qint64 PerSecond = 1000;
    constexpr qint64 NanosecondsEach = 1000000;
    return duration.tv_sec * PerSecond + duration.tv_nsec / NanosecondsEach;
}

} // namespace

// Takes the place of the C library's for the whole program, Qt included.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the C library's have reserved names.
extern "C" __attribute__((visibility("default"))) int nanosleep(const timespec* duration, timespec* remaining)
{
    static auto* const systemNanosleep = SystemFunction<int(const timespec*, timespec*)>("nanosleep");
    if (currentLog != nullptr) {
        currentLog->Record(Milliseconds(*duration));
    }
    return systemNanosleep(duration, remaining);
}

PauseLog::PauseLog()
{
    Q_ASSERT(currentLog == nullptr);
    currentLog = this;
}

PauseLog::~PauseLog()
{
    currentLog = nullptr;
}
