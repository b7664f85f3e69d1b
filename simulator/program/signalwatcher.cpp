#include "simulator/program/signalwatcher.h"

#include <sys/signalfd.h>

#include <cerrno>
#include <system_error>

#include <QSocketNotifier>

namespace Simulator
{

namespace
{

/// A hang-up that was ignored from the start (nohup) stays ignored.
bool IsIgnored(int signalNumber)
{
    struct sigaction action = {};
    ::sigaction(signalNumber, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

/// The terminal signals its whole foreground, but tells the leader of the session alone that it has closed.
bool IsForTheForeground(const signalfd_siginfo& received)
{
    const bool isForLeader = received.ssi_signo == SIGHUP && ::getsid(0) == ::getpid();
    return received.ssi_code == SI_KERNEL && !isForLeader;
}

int OpenSignals(sigset_t* originalMask)
{
    sigset_t watched;
    ::sigemptyset(&watched);
    ::sigaddset(&watched, SIGINT);
    ::sigaddset(&watched, SIGTERM);
    ::sigaddset(&watched, SIGCHLD);
    if (!IsIgnored(SIGHUP)) {
        ::sigaddset(&watched, SIGHUP);
    }
    ::pthread_sigmask(SIG_BLOCK, &watched, originalMask);
    std::signal(SIGCHLD, SIG_DFL); // With an inherited SIG_IGN, children would leave no exit status.
    const int descriptor = ::signalfd(-1, &watched, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "no signal descriptor");
    }
    return descriptor;
}

} // namespace

SignalWatcher::SignalWatcher() : _descriptor(OpenSignals(&_originalMask))
{
    auto* notifier = new QSocketNotifier(_descriptor.Get(), QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] { ReadSignal(); });
}

const sigset_t& SignalWatcher::OriginalMask() const
{
    return _originalMask;
}

void SignalWatcher::ReadSignal()
{
    signalfd_siginfo received{};
    if (::read(_descriptor.Get(), &received, sizeof(received)) != static_cast<ssize_t>(sizeof(received))) {
        return;
    }
    const int signalNumber = static_cast<int>(received.ssi_signo);
    if (signalNumber == SIGCHLD) {
        Q_EMIT ChildChanged();
    } else {
        Q_EMIT EndRequested(signalNumber, IsForTheForeground(received));
    }
}

} // namespace Simulator
