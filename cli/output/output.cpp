#include "cli/output/output.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <iostream>

#include "cli/words/exitstatus.h"
#include "cli/words/text.h"

namespace Cli
{

Output::Output(int descriptor, int giveUpDescriptor)
    : _descriptor(descriptor), _giveUpDescriptor(giveUpDescriptor)
{
}

Output::Result Output::Write(const QByteArray& lines)
{
    if (_state == Result::Written) {
        _state = WriteAll(lines);
    }
    return _state;
}

Output::Result Output::WriteAll(const QByteArray& lines)
{
    constexpr int MostAtOnce = PIPE_BUF; // a pipe that can be written to takes this much without waiting
    int position = 0;
    while (position < lines.size()) {
        if (const Result result = WaitForReader(); result != Result::Written) {
            return result;
        }
        const auto size = static_cast<size_t>(qMin(lines.size() - position, MostAtOnce));
        const auto written = ::write(_descriptor, lines.constData() + position, size);
        if (written < 0 && errno != EINTR && errno != EAGAIN) {
            return FailWith(errno);
        }
        position += written > 0 ? static_cast<int>(written) : 0;
    }
    return Result::Written;
}

Output::Result Output::WaitForReader()
{
    constexpr int WithoutLimit = -1;
    std::array<pollfd, 2> descriptors{{{_descriptor, POLLOUT, 0}, {_giveUpDescriptor, POLLIN, 0}}};
    while (::poll(descriptors.data(), descriptors.size(), WithoutLimit) < 0) {
        if (errno != EINTR) {
            return FailWith(errno);
        }
    }
    // An error of the output shows when it is written to.
    return descriptors[0].revents != 0 ? Result::Written : Result::GivenUp;
}

Output::Result Output::FailWith(int error)
{
    _error = error;
    return error == EPIPE ? Result::ReaderGone : Result::Failed;
}

int PrintingStatus(const Output& output, Output::Result result)
{
    switch (result) {
    case Output::Result::Written:
        return ExitStatus::Done;
    case Output::Result::ReaderGone:
        return ExitStatus::Signalled + SIGPIPE;
    case Output::Result::Failed:
        WriteError(CannotWrite(output.LastError()));
        break;
    case Output::Result::GivenUp:
        break;
    }
    return ExitStatus::NotDone;
}

void SayToTerminal(const QString& text)
{
    if (::isatty(STDERR_FILENO) != 0) {
        WriteError(text);
    }
}

QString CannotWrite(int error)
{
    return Text::tr("cannot write the output: %1").arg(qt_error_string(error));
}

void WriteError(const QString& text)
{
    std::cerr << "vesmar: " << text.toLocal8Bit().constData() << '\n';
}

} // namespace Cli
