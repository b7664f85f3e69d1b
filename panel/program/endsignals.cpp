#include "panel/program/endsignals.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace Panel
{

namespace
{

std::array<int, 2> ends{-1, -1}; ///< Written to in the handler, read from in the event loop.

int openEnds()
{
    ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data());
    return ends.back();
}

void tellEnd(int /*signalNumber*/)
{
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(ends.front(), &byte, 1);
}

} // namespace

EndSignals::EndSignals(const std::function<void()>& end) : _notifier(openEnds(), QSocketNotifier::Read)
{
    QObject::connect(&_notifier, &QSocketNotifier::activated, &_notifier, [end] {
        char byte = 0;
        [[maybe_unused]] const ssize_t received = ::read(ends.back(), &byte, 1);
        end();
    });
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP}) {
        std::signal(signalNumber, tellEnd);
    }
}

} // namespace Panel
