// Linked into the programs that start others, where qemu emulates them. It takes away what Qt asks the kernel
// for, and qemu cannot do.

#include <sys/syscall.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <cstdarg>

#include "support/systemfunction.h"

/// QProcess asks the kernel whether it may wait for a descriptor of a process. It then takes for granted that
/// qemu can begin a process with such a descriptor; where that fails, it would end process -1, which are all
/// processes.
extern "C" __attribute__((visibility("default"))) long syscall(long number, ...) noexcept
{
    va_list list;
    va_start(list, number);
    std::array<long, 6> arguments{};
    for (long& argument : arguments) {
        argument = va_arg(list, long);
    }
    va_end(list);
    if (number == SYS_waitid && arguments[0] == P_PIDFD) {
        errno = EINVAL;
        return -1;
    }
    // Looked up each time: to keep it, threads might have to wait for each other, which ends here again.
    return SystemFunction<long(long, ...)>("syscall")(number, arguments[0], arguments[1], arguments[2],
                                                      arguments[3], arguments[4], arguments[5]);
}
