#include "cli/kit/signalwatcher.h"

#include <QSocketNotifier>

#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace Cli
{

namespace
{

bool IsIgnored(int signalNumber)
{
    struct sigaction action = {};
    ::sigaction(signalNumber, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

int OpenSignals()
{
    sigset_t watched;
    ::sigemptyset(&watched);
    ::sigaddset(&watched, SIGINT);
    ::sigaddset(&watched, SIGTERM);
    if (!IsIgnored(SIGHUP)) {
        ::sigaddset(&watched, SIGHUP);
    }
    ::pthread_sigmask(SIG_BLOCK, &watched, nullptr);
    const int descriptor = ::signalfd(-1, &watched, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "no signal descriptor");
    }
    return descriptor;
}

} // namespace

SignalWatcher::SignalWatcher() : _descriptor(OpenSignals())
{
    auto* notifier = new QSocketNotifier(_descriptor, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &SignalWatcher::EmitPending);
}

SignalWatcher::~SignalWatcher()
{
    ::close(_descriptor);
}

void SignalWatcher::EmitPending()
{
    signalfd_siginfo received{};
    while (::read(_descriptor, &received, sizeof(received)) == static_cast<ssize_t>(sizeof(received))) {
        Q_EMIT Received(static_cast<int>(received.ssi_signo));
    }
}

void IgnoreHaltingSignals()
{
    for (const int halting : {SIGTSTP, SIGTTIN, SIGTTOU, SIGQUIT}) {
        std::signal(halting, SIG_IGN);
    }
}

} // namespace Cli
