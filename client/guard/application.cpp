#include "client/guard/application.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "client/guard/channel.h"
#include "client/line/deviceholders.h"

namespace VesmarClient
{

namespace
{

/// The process that has made the channel.
pid_t ProcessAtOtherEnd()
{
    ucred credentials{};
    socklen_t size = sizeof(credentials);
    ::getsockopt(GuardChannel, SOL_SOCKET, SO_PEERCRED, &credentials, &size);
    return credentials.pid;
}

} // namespace

Application::Application()
    : _process(ProcessAtOtherEnd()),
      _program(ProgramName(_process)),
      _handle(static_cast<int>(::syscall(SYS_pidfd_open, _process, 0))),
      _channel(GuardChannel, QSocketNotifier::Read)
{
    connect(&_channel, &QSocketNotifier::activated, this, &Application::Receive);
    if (_handle >= 0) { // a child of the application may keep the channel open
        _end = std::make_unique<QSocketNotifier>(_handle, QSocketNotifier::Read);
        connect(_end.get(), &QSocketNotifier::activated, this, &Application::End);
    }
}

Application::~Application()
{
    if (_handle >= 0) {
        ::close(_handle);
    }
}

bool Application::HasEnded() const
{
    pollfd end{_handle, POLLIN, 0};
    return _handle >= 0 ? ::poll(&end, 1, 0) > 0 : ::kill(_process, 0) != 0 && errno == ESRCH;
}

void Application::Receive()
{
    if (!ReadMessages()) {
        End();
    }
}

/// False once the channel is closed.
bool Application::ReadMessages()
{
    GuardMessage message{};
    ssize_t size = 0;
    while ((size = ::recv(GuardChannel, &message, sizeof(message), MSG_DONTWAIT)) > 0) {
        _isMeasuring = message == GuardMessage::Watch;
        if (_isMeasuring) {
            ::send(GuardChannel, &message, sizeof(message), MSG_NOSIGNAL);
        }
    }
    return size < 0 && errno == EAGAIN;
}

/// What the application said last may still wait in the channel.
void Application::End()
{
    ReadMessages();
    _channel.setEnabled(false);
    if (_end) {
        _end->setEnabled(false);
    }
    if (_isMeasuring) {
        Q_EMIT Lost();
    } else {
        Q_EMIT Left();
    }
}

} // namespace VesmarClient
