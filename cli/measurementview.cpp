#include "cli/measurementview.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include "cli/format.h"

namespace Cli
{

namespace
{

constexpr std::chrono::milliseconds RedrawPeriod{200};
constexpr std::chrono::milliseconds LongestFlush{1000};

/// The widest line that does not wrap.
int LineWidth()
{
    constexpr int Usual = 80;
    winsize size{};
    const bool isKnown = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
    return (isKnown ? size.ws_col : Usual) - 1;
}

std::optional<std::chrono::milliseconds> TotalTime(const MeasureFunction& function)
{
    const std::optional<int> seconds = function.Seconds();
    if (!seconds) {
        return std::nullopt;
    }
    return std::chrono::seconds(*seconds) +
           std::chrono::milliseconds(std::llround(function.secondsBefore * 1000));
}

} // namespace

MeasurementView::MeasurementView(const MeasureFunction& function, bool isJson, ReadingsFile* file)
    : _function(function),
      _isJson(isJson),
      _isLive(!isJson && ::isatty(STDOUT_FILENO) == 1),
      _file(file),
      _output(STDOUT_FILENO),
      _errors(STDERR_FILENO),
      _total(TotalTime(function))
{
    // Later, so that it never comes in the middle of what is being done.
    connect(&_output, &LiveOutput::Lost, this, &MeasurementView::OutputLost, Qt::QueuedConnection);
    connect(&_redraw, &QTimer::timeout, this, &MeasurementView::DrawLiveLine);
}

void MeasurementView::BeginTime()
{
    _time.start();
    if (_isLive) {
        _redraw.start(RedrawPeriod);
        DrawLiveLine();
    }
}

std::chrono::milliseconds MeasurementView::Elapsed() const
{
    return std::chrono::milliseconds(_time.isValid() ? _time.elapsed() : 0);
}

void MeasurementView::ShowStatus(Vesmar::MeasurementState status)
{
    ShowEvent("status", Show(status).json);
}

void MeasurementView::ShowError(Vesmar::Error error)
{
    ShowEvent("error", Show(error).json);
}

void MeasurementView::ShowEvent(const char* event, const QJsonValue& value)
{
    if (_isJson) {
        _output.Write(EventJson(QDateTime::currentDateTime(), QString::fromLatin1(event), value));
    }
}

void MeasurementView::ShowResults(const Vesmar::MeasurementResults& results)
{
    const QDateTime now = QDateTime::currentDateTime();
    _readings = ReadingsOf(results);
    if (_file != nullptr) {
        _file->Write(CsvRow(now, Elapsed(), _readings));
    }
    if (_isJson) {
        _output.Write(ReadingJson(now, Elapsed(), _readings));
    } else if (_isLive) {
        DrawLiveLine();
    } else {
        _output.Write(ReadingLine(Elapsed(), _readings));
    }
}

void MeasurementView::DrawLiveLine()
{
    _output.Write("\r" + LiveLine({Elapsed(), _total}, _readings, LineWidth()).toUtf8() + "\033[K");
    _hasLiveLine = true;
}

/// The next text goes onto a line of its own.
void MeasurementView::EraseLiveLine()
{
    if (_hasLiveLine) {
        _output.Write("\r\033[K");
        _hasLiveLine = false;
    }
}

void MeasurementView::Say(const QString& text)
{
    EraseLiveLine();
    _errors.Write("vesmar: " + text.toLocal8Bit() + '\n');
}

void MeasurementView::ShowEnd(const MeasurementSession& session)
{
    _redraw.stop();
    const QString message = EndMessage(_function.name, session);
    const bool isDone = session.CurrentOutcome() == MeasurementSession::Outcome::Completed;
    if (_isJson) {
        _output.Write(ResultJson({_function.name, message, _readings}, session));
    }
    if (!isDone || !session.IsStopConfirmed()) {
        Say(message);
    } else if (!_isJson) {
        EraseLiveLine();
        _output.Write(message.toUtf8() + '\n');
    }
    if (isDone && !_isJson) {
        _output.Write(ResultText(_readings));
    }
}

bool MeasurementView::Finish()
{
    const bool isFileWhole = _file == nullptr || _file->Problem().isEmpty();
    if (!isFileWhole) {
        Say(_file->Problem());
    }
    const bool isShown = _output.Flush(LongestFlush);
    if (!isShown) {
        Say(QStringLiteral("cannot write the output"));
    }
    _errors.Flush(LongestFlush);
    return isShown && isFileWhole;
}

} // namespace Cli
