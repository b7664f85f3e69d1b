#include "simulator/commandinput.h"

#include <array>
#include <csignal>
#include <unistd.h>

namespace Simulator
{

CommandInput::CommandInput() : _notifier(STDIN_FILENO, QSocketNotifier::Read)
{
    std::signal(SIGTTIN, SIG_IGN); // in the background reading fails instead of stopping the instrument
    connect(&_notifier, &QSocketNotifier::activated, this, [this] { ReadInput(); });
}

void CommandInput::ReadInput()
{
    std::array<char, 256> buffer{};
    const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count <= 0) {
        _notifier.setEnabled(false);
        return;
    }
    _unfinished.append(buffer.data(), static_cast<int>(count));
    int end = 0;
    while ((end = _unfinished.indexOf('\n')) >= 0) {
        const QString line = QString::fromUtf8(_unfinished.left(end)).trimmed();
        _unfinished.remove(0, end + 1);
        if (!line.isEmpty()) {
            Q_EMIT LineRead(line);
        }
    }
}

} // namespace Simulator
