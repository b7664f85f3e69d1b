#include "client/guard/guard.h"

#include <sys/socket.h>
#include <unistd.h>

#include "client/guard/channel.h"
#include "client/guard/guardprogram.h"
#include "client/words/translation.h"

namespace VesmarClient
{

namespace
{

Failure GuardMissing(const QString& reason)
{
    Failure failure;
    failure.name = QStringLiteral("guard-missing");
    failure.whatHappened =
        Translated(QT_TRANSLATE_NOOP("VesmarClient",
                                     "The program vesmar-guard, which stops the instrument if this program "
                                     "ends in the middle of a measurement, cannot be started: %1. Nothing "
                                     "was sent."))
            .arg(reason);
    failure.nextStep = Translated(
        QT_TRANSLATE_NOOP("VesmarClient", "Install it with the library, as libexec/vesmar/vesmar-guard."));
    return failure;
}

bool Send(int channel, GuardMessage message)
{
    return ::send(channel, &message, sizeof(message), MSG_NOSIGNAL) == sizeof(message);
}

} // namespace

Guard& Guard::OfThisProcess()
{
    static auto* const guard = new Guard; // the end of the process closes its channel
    return *guard;
}

Guard::~Guard()
{
    Close();
}

Failure Guard::Watch()
{
    if (_channel >= 0 && !IsAcknowledged()) { // somebody has ended it
        GiveUp();
    }
    if (_channel < 0) {
        const GuardStart start = StartGuard();
        _channel = start.channel;
        if (_channel < 0 || !IsAcknowledged()) {
            GiveUp();
            return GuardMissing(qt_error_string(start.error));
        }
    }
    _isWatching = true;
    return {};
}

void Guard::Release()
{
    if (_isWatching) {
        Send(_channel, GuardMessage::Release);
        _isWatching = false;
    }
}

bool Guard::IsAcknowledged() const
{
    GuardMessage answer{};
    return Send(_channel, GuardMessage::Watch) &&
           ::recv(_channel, &answer, sizeof(answer), 0) == sizeof(answer) && answer == GuardMessage::Watch;
}

/// One that is merely late must not take the end of its channel for that of this process.
void Guard::GiveUp()
{
    Send(_channel, GuardMessage::Release);
    Close();
}

void Guard::Close()
{
    if (_channel >= 0) {
        ::close(_channel);
        _channel = -1;
    }
}

} // namespace VesmarClient
