#include "cli/measure/measurementview.h"

#include <cmath>

#include "cli/words/advice.h"
#include "cli/words/exitstatus.h"
#include "cli/words/text.h"
#include "cli/words/values.h"

namespace Cli
{

namespace
{

using std::chrono::milliseconds;
using Vesmar::MeasurementState;
using VesmarClient::Outcome;
using VesmarClient::Phase;

constexpr milliseconds RedrawPeriod{200};

/// Nothing for a function whose end nobody knows in advance.
std::optional<milliseconds> TotalTime(const VesmarClient::Settings& settings)
{
    bool isKnown = false;
    const double seconds = settings.value(QStringLiteral("time")).toDouble(&isKnown);
    const double before = settings.value(QStringLiteral("time-offset")).toDouble();
    return isKnown ? std::make_optional(milliseconds(std::llround((seconds + before) * 1000))) : std::nullopt;
}

/// What a measurement comes to with this phase, in order, as the driver names it.
QVector<MeasurementState> StatusesOf(Phase phase)
{
    switch (phase) {
    case Phase::Preparing:
        return {MeasurementState::Preparing};
    case Phase::Starting:
        return {MeasurementState::Prepared, MeasurementState::Starting};
    case Phase::Running:
        return {MeasurementState::Running};
    case Phase::Stopping:
    case Phase::Confirming:
        return {MeasurementState::Stopping};
    default:
        return {};
    }
}

} // namespace

MeasurementView::MeasurementView(const VesmarClient::Settings& settings, Form form, ReadingsFile* file)
    : _function(VesmarClient::Functions::find(settings.function())),
      _total(TotalTime(settings)),
      _form(form),
      _file(file),
      _screen(form == Form::Text)
{
    connect(&_screen, &LiveScreen::Lost, this, &MeasurementView::OutputLost);
    connect(&_redraw, &QTimer::timeout, this, [this] { _screen.Draw(LiveText()); });
    if (_form == Form::Csv) {
        _screen.Write(CsvHeader(_function));
    }
}

void MeasurementView::WarnOfDanger()
{
    if (_function.isDangerous) {
        Say(Text::tr("A DANGEROUS VOLTAGE is present from the start of the measurement until the instrument "
                     "is confirmed to have stopped. Touch neither the appliance nor the probes."));
    }
}

void MeasurementView::BeginTest(const QString& mode)
{
    _mode = mode;
    _readings.clear();
}

/// The time of a test that runs in several phases is that of all of them.
void MeasurementView::ShowPhase(Phase phase)
{
    _phase = phase;
    if (!_time.isValid() || (phase == Phase::Running && _mode.isEmpty())) {
        BeginTime();
    }
    for (const MeasurementState status : StatusesOf(phase)) {
        ShowStatus(status);
    }
    if (_screen.HasLiveLine() || !_mode.isEmpty()) {
        ShowLine(PhaseText());
    }
}

void MeasurementView::BeginTime()
{
    _time.start();
    if (_screen.HasLiveLine()) {
        _redraw.start(RedrawPeriod);
    }
}

milliseconds MeasurementView::Elapsed() const
{
    return milliseconds(_time.isValid() ? _time.elapsed() : 0);
}

void MeasurementView::ShowStatus(MeasurementState status)
{
    if (status != _status) {
        _status = status;
        ShowEvent("status", {{QStringLiteral("value"), Show(status).json}});
    }
}

void MeasurementView::ShowError(VesmarClient::Error error)
{
    ShowEvent("error", {{QStringLiteral("value"), Show(error).json}});
}

void MeasurementView::ShowEvent(const char* event, const QJsonObject& fields)
{
    if (_form == Form::Json) {
        _screen.Write(EventLine(QDateTime::currentDateTime(), QString::fromLatin1(event), fields));
    }
}

/// Nothing for programs, which have events.
void MeasurementView::ShowLine(const QString& shown)
{
    if (_screen.HasLiveLine()) {
        _screen.Draw(LiveText());
    } else if (_form == Form::Text) {
        _screen.Write(TextLine(Elapsed(), IsDangerous(), shown));
    }
}

void MeasurementView::ShowResult(const VesmarClient::Result& result)
{
    const QDateTime now = QDateTime::currentDateTime();
    _readings = result.readings();
    _gap.reset();
    if (_file != nullptr) {
        _file->Write(CsvRow(now, Elapsed(), _readings));
    }
    if (_form == Form::Csv) {
        _screen.Write(CsvRow(now, Elapsed(), _readings));
    }
    if (_phase == Phase::Running) {
        ShowStatus(MeasurementState::Measuring);
    }
    if (_form == Form::Json) {
        _screen.Write(ReadingJson(now, Elapsed(), _readings));
    }
    ShowLine(Listed(_readings));
}

void MeasurementView::ShowGap(const VesmarClient::Gap& gap)
{
    _gap = gap;
    ShowEvent("gap", GapFields(gap));
    ShowLine(NoReading(gap));
}

/// It may be present until the instrument is confirmed to have stopped.
bool MeasurementView::IsDangerous() const
{
    return _function.isDangerous && _phase >= Phase::Starting && _phase <= Phase::Confirming;
}

QString MeasurementView::PhaseText() const
{
    return _mode.isEmpty() ? PhaseName(_phase) : _mode + QStringLiteral(": ") + PhaseName(_phase);
}

/// Readings and bar belong to a function that runs: once it is being ended, they would tell of the past.
QString MeasurementView::LiveText() const
{
    if (_phase != Phase::Running || !IsContinuous(_function)) {
        return LiveLine({Elapsed(), std::nullopt}, IsDangerous(), PhaseText());
    }
    return LiveLine({Elapsed(), _total}, IsDangerous(), _gap ? NoReading(*_gap) : Listed(_readings));
}

void MeasurementView::Say(const QString& text)
{
    _screen.Say(text);
}

int MeasurementView::ShowEnd(const MeasurementEnd& end)
{
    _redraw.stop();
    if (end.isStopConfirmed) {
        ShowStatus(MeasurementState::Stopped);
    }
    if (end.failure.name == QLatin1String("function-lost")) {
        _readings.clear(); // The last one may be a reading of another function.
    }
    const Ending ending = EndingWithFile(end);
    if (_form == Form::Json) {
        const QJsonObject fields = ResultFields(_function.identifier, end, _readings);
        _screen.Write(ResultLine(QDateTime::currentDateTime(), ending, fields));
    }
    if (ending.status != ExitStatus::Done) {
        Say(_form == Form::Json ? ending.message : WithAdvice(ending.message, ending.error));
    } else if (_form == Form::Text) {
        _screen.Write(ending.message.toUtf8() + '\n');
    }
    const bool isMeasured = end.outcome == Outcome::Completed || end.outcome == Outcome::Interrupted;
    if (isMeasured && _form == Form::Text) {
        _screen.Write(ResultText(_readings, end.gaps));
    }
    return ending.status;
}

/// Where the readings shall be in a file, a measurement alone is not all that was asked for.
Ending MeasurementView::EndingWithFile(const MeasurementEnd& end) const
{
    Ending ending = EndingOf((_function.identifier + QLatin1Char(' ') + _mode).trimmed(), end);
    if (_file == nullptr || _file->Problem().isEmpty()) {
        return ending;
    }
    ending.message += QLatin1Char(' ') + Text::tr("Not every reading was kept: %1.").arg(_file->Problem());
    if (ending.status == ExitStatus::Done) {
        ending.status = ExitStatus::NotDone;
        ending.outcome = Ending::Outcome::Failed;
        ending.reason = QStringLiteral("file-not-written");
    }
    return ending;
}

int MeasurementView::Finish(int exitStatus)
{
    return _screen.Finish(exitStatus);
}

} // namespace Cli
