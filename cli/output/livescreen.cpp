#include "cli/output/livescreen.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <climits>

#include "cli/output/output.h"
#include "cli/output/wrapped.h"
#include "cli/words/exitstatus.h"
#include "cli/words/text.h"

namespace Cli
{

namespace
{

constexpr std::chrono::milliseconds LongestFlush{1000};

winsize TerminalSize()
{
    winsize size{};
    ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size);
    return size;
}

/// The widest line that does not touch the edge of the terminal.
int Width()
{
    constexpr int Usual = 80;
    const int columns = TerminalSize().ws_col;
    return (columns > 1 ? columns : Usual) - 1;
}

/// How many lines are there; many where that is not known.
int Height()
{
    const int rows = TerminalSize().ws_row;
    return rows > 0 ? rows : INT_MAX;
}

} // namespace

LiveScreen::LiveScreen(bool isText)
    : _output(STDOUT_FILENO), _errors(STDERR_FILENO), _hasLiveLine(isText && ::isatty(STDOUT_FILENO) == 1)
{
    // Queued, so that the signal never arrives in the middle of another function.
    connect(&_output, &LiveOutput::Lost, this, &LiveScreen::Lost, Qt::QueuedConnection);
}

/// The cursor rests at the beginning of what is drawn: there a terminal keeps it when it becomes narrower and
/// breaks the lines anew.
void LiveScreen::Draw(const QString& text)
{
    const QStringList lines = Wrapped(text, Width()).mid(0, Height());
    QByteArray bytes = '\r' + lines.join(QStringLiteral("\033[K\r\n")).toUtf8() + "\033[J\r";
    if (lines.size() > 1) {
        bytes += "\033[" + QByteArray::number(lines.size() - 1) + 'A';
    }
    _output.Write(bytes);
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
        _output.Write("\r\033[J");
        _isDrawn = false;
    }
}

QString LiveScreen::Loss() const
{
    return _output.Error() != 0 ? CannotWrite(_output.Error()) : Text::tr("nobody reads the output");
}

/// An output that cannot be written is a failure of its own, even where it has only aborted a measurement.
int LiveScreen::Finish(int exitStatus)
{
    const bool isShown = _output.Flush(LongestFlush);
    if (!isShown) {
        Say(Loss());
    }
    _errors.Flush(LongestFlush);
    const bool isWorse =
        exitStatus == ExitStatus::Done || (exitStatus == ExitStatus::Aborted && _output.Error() != 0);
    return !isShown && isWorse ? ExitStatus::NotDone : exitStatus;
}

} // namespace Cli
