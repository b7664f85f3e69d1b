#include "cli/measurementview.h"

#include "cli/format.h"

namespace Cli
{

namespace
{

constexpr std::chrono::milliseconds RedrawPeriod{200};

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
    : _function(function), _isJson(isJson), _file(file), _screen(!isJson), _total(TotalTime(function))
{
    connect(&_screen, &LiveScreen::Lost, this, &MeasurementView::OutputLost);
    connect(&_redraw, &QTimer::timeout, this, &MeasurementView::DrawLiveLine);
}

void MeasurementView::BeginTime()
{
    _time.start();
    if (_screen.HasLiveLine()) {
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
        _screen.Write(EventJson(QDateTime::currentDateTime(), QString::fromLatin1(event), value));
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
        _screen.Write(ReadingJson(now, Elapsed(), _readings));
    } else if (_screen.HasLiveLine()) {
        DrawLiveLine();
    } else {
        _screen.Write(ReadingLine(Elapsed(), _readings));
    }
}

void MeasurementView::DrawLiveLine()
{
    _screen.Draw(LiveLine({Elapsed(), _total}, _readings, LiveScreen::Width()));
}

void MeasurementView::Say(const QString& text)
{
    _screen.Say(text);
}

void MeasurementView::ShowEnd(const MeasurementSession& session)
{
    _redraw.stop();
    const QString message = EndMessage(_function.name, session);
    const bool isDone = session.CurrentOutcome() == MeasurementSession::Outcome::Completed;
    if (_isJson) {
        _screen.Write(ResultJson({_function.name, message, _readings}, session));
    }
    if (!isDone || !session.IsStopConfirmed()) {
        Say(message);
    } else if (!_isJson) {
        _screen.Write(message.toUtf8() + '\n');
    }
    if (isDone && !_isJson) {
        _screen.Write(ResultText(_readings));
    }
}

bool MeasurementView::Finish()
{
    const bool isFileWhole = _file == nullptr || _file->Problem().isEmpty();
    if (!isFileWhole) {
        Say(_file->Problem());
    }
    return _screen.Finish() && isFileWhole;
}

} // namespace Cli
