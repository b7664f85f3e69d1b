#include "cli/measure/measurementview.h"

#include <cmath>

#include "cli/words/advice.h"
#include "cli/words/exitstatus.h"
#include "cli/words/format.h"

namespace Cli
{

namespace
{

using VesmarClient::MeasurementSession;

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

void MeasurementView::BeginTest(const QString& mode)
{
    _mode = mode;
    _readings.clear();
}

void MeasurementView::ShowPhase(MeasurementSession::Phase phase)
{
    const QString name = PhaseName(phase);
    if (_mode.isEmpty() || name.isEmpty()) {
        return;
    }
    BeginTime();
    _phase = _mode + QStringLiteral(": ") + name;
    if (_screen.HasLiveLine()) {
        DrawLiveLine();
    } else if (!_isJson) {
        _screen.Write(PhaseLine(Elapsed(), _phase).toUtf8() + '\n');
    }
}

void MeasurementView::BeginTime()
{
    if (_time.isValid()) {
        return;
    }
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
    if (_isJson && !_isEnded) {
        _screen.Write(EventLine(QDateTime::currentDateTime(), QString::fromLatin1(event),
                                {{QStringLiteral("value"), value}}));
    }
}

void MeasurementView::ShowResults(const Vesmar::MeasurementResults& results)
{
    if (_isEnded) {
        return;
    }
    const QDateTime now = QDateTime::currentDateTime();
    _readings = VesmarClient::ReadingsOf(results);
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
    _screen.Draw(LiveText());
}

QString MeasurementView::LiveText() const
{
    return _phase.isEmpty() ? LiveLine({Elapsed(), _total}, _readings, LiveScreen::Width())
                            : PhaseLine(Elapsed(), _phase).left(LiveScreen::Width());
}

void MeasurementView::Say(const QString& text)
{
    _screen.Say(text);
}

int MeasurementView::ShowEnd(const MeasurementSession& session, Vesmar::Error presentError)
{
    _redraw.stop();
    if (session.FailureReason() == MeasurementSession::Reason::FunctionLost) {
        _readings.clear(); // The last one may be a reading of another function.
    }
    _isEnded = true;
    const Ending ending = EndingWithFile(session, presentError);
    const bool isMeasured = session.CurrentOutcome() == MeasurementSession::Outcome::Completed;
    if (_isJson) {
        const QJsonObject fields = ResultFields(_function.name, session.IsStopConfirmed(), _readings);
        _screen.Write(ResultLine(QDateTime::currentDateTime(), ending, fields));
    }
    if (ending.status != ExitStatus::Done) {
        Say(_isJson ? ending.message : WithAdvice(ending.message, ending.error));
    } else if (!_isJson) {
        _screen.Write(ending.message.toUtf8() + '\n');
    }
    if (isMeasured && !_isJson) {
        _screen.Write(ResultText(_readings));
    }
    return ending.status;
}

/// Where the readings shall be in a file, a measurement alone is not all that was asked for.
Ending MeasurementView::EndingWithFile(const MeasurementSession& session, Vesmar::Error presentError) const
{
    const QString name = (_function.name + QLatin1Char(' ') + _mode).trimmed();
    Ending ending = EndingOf(name, session, presentError);
    if (_file == nullptr || _file->Problem().isEmpty()) {
        return ending;
    }
    ending.message += QStringLiteral(" Not every reading was kept: %1.").arg(_file->Problem());
    if (ending.status == ExitStatus::Done) {
        ending.status = ExitStatus::NotDone;
        ending.outcome = Ending::Outcome::Failed;
        ending.reason = QStringLiteral("file-not-written");
    }
    return ending;
}

bool MeasurementView::Finish()
{
    return _screen.Finish();
}

} // namespace Cli
