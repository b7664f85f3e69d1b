// Loaded in front of the C library into a program: what it writes to the system log, it appends to a file
// that the environment names, one line each with the priority in front.

#include <fcntl.h>
#include <syslog.h>
#include <unistd.h>

#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

extern "C" __attribute__((visibility("default"))) void syslog(int priority, const char* format, ...)
{
    std::array<char, 1024> text{};
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    const int log = ::open(std::getenv("VESMAR_TEST_SYSTEM_LOG"), O_WRONLY | O_CREAT | O_APPEND, 0666);
    ::dprintf(log, "%d %s\n", priority, text.data());
    ::close(log);
}
