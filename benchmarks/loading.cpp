#include "figures.h"

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

#include <QtGlobal>

#include "samples.h"
#include "table.h"

namespace
{

/// How long a process that has Qt already needs for the library, in ms.
double LoadTime(const char* library)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        qFatal("There is no pipe.");
    }
    const pid_t child = fork();
    if (child == 0) {
        bool isLoaded = false;
        const double time = TimeOf([&] { isLoaded = dlopen(library, RTLD_NOW) != nullptr; });
        [[maybe_unused]] const auto written = write(ends[1], &time, isLoaded ? sizeof time : 0);
        _exit(0);
    }
    close(ends[1]);
    double time = 0;
    if (read(ends[0], &time, sizeof time) != static_cast<ssize_t>(sizeof time)) {
        qFatal("%s cannot be loaded.", library);
    }
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return time / 1000;
}

} // namespace

void MeasureLoading()
{
    Pair pair;
    for (int count = 0; count < Scaled(100); ++count) {
        pair.ours.Add(LoadTime(VESMAR_LIBRARY));
        pair.beside.Add(LoadTime("libQt5SerialBus.so.5"));
    }
    Print({"Loading the driver", "ms", pair.ours.Median(), pair.beside.Median(), "Qt SerialBus"});
}
