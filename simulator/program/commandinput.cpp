#include "simulator/program/commandinput.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>

#include "simulator/faults/faultfile.h"

namespace Simulator
{

namespace
{

// The longest command is a fault with the word "inject" in front of it.
constexpr int LongestLine = LongestFaultFile + 16;

} // namespace

CommandInput::CommandInput() : _notifier(STDIN_FILENO, QSocketNotifier::Read)
{
    std::signal(SIGTTIN,
                SIG_IGN); // In the background, reading then fails instead of stopping the instrument.
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
    std::for_each(buffer.begin(), buffer.begin() + count, [this](char byte) { Receive(byte); });
}

/// The excess of a line that is too long is dropped; what is kept is enough to tell that the line is too
/// long.
void CommandInput::Receive(char byte)
{
    if (byte != '\n') {
        if (_unfinished.size() <= LongestLine) {
            _unfinished.append(byte);
        }
        return;
    }
    const QString line = QString::fromUtf8(_unfinished).trimmed();
    _unfinished.clear();
    if (!line.isEmpty()) {
        Q_EMIT LineRead(line);
    }
}

} // namespace Simulator
