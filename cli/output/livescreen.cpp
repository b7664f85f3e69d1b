#include "cli/output/livescreen.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace Cli
{

namespace
{

constexpr std::chrono::milliseconds LongestFlush{1000};

} // namespace

LiveScreen::LiveScreen(bool isText)
    : _output(STDOUT_FILENO), _errors(STDERR_FILENO), _hasLiveLine(isText && ::isatty(STDOUT_FILENO) == 1)
{
    // Queued, so that the signal never arrives in the middle of another function.
    connect(&_output, &LiveOutput::Lost, this, &LiveScreen::Lost, Qt::QueuedConnection);
}

int LiveScreen::Width()
{
    constexpr int Usual = 80;
    winsize size{};
    const bool isKnown = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
    return (isKnown ? size.ws_col : Usual) - 1;
}

void LiveScreen::Draw(const QString& line)
{
    _output.Write("\r" + line.toUtf8() + "\033[K");
    _isDrawn = true;
}

void LiveScreen::Write(const QByteArray& lines)
{
    Erase();
    _output.Write(lines);
}

void LiveScreen::Say(const QString& text)
{
    Erase();
    _errors.Write("vesmar: " + text.toLocal8Bit() + '\n');
}

void LiveScreen::Erase()
{
    if (_isDrawn) {
        _output.Write("\r\033[K");
        _isDrawn = false;
    }
}

bool LiveScreen::Finish()
{
    const bool isShown = _output.Flush(LongestFlush);
    if (!isShown) {
        Say(QStringLiteral("cannot write the output"));
    }
    _errors.Flush(LongestFlush);
    return isShown;
}

} // namespace Cli
