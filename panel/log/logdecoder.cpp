#include "panel/log/logdecoder.h"

#include <utility>

namespace Panel
{

using VesmarClient::Function;
using VesmarClient::Functions;
using VesmarClient::Result;
using VesmarClient::Settings;

namespace
{

constexpr int MillisecondsOfDay = 24 * 60 * 60 * 1000;

/// In seconds. A log has times of day: what is earlier is on the next day.
double secondsBetween(const QTime& begin, const QTime& end)
{
    const int milliseconds = begin.msecsTo(end);
    return (milliseconds < 0 ? milliseconds + MillisecondsOfDay : milliseconds) / 1000.0;
}

} // namespace

LogDecoder::LogDecoder(bool keepsRecords)
    : _keepsRecords(keepsRecords), _history([this](const Decode::Event& event) { add(event); })
{
}

void LogDecoder::read(const Decode::LogLine& line)
{
    const Decode::LogEntry entry = Decode::ParseLogLine(line.text);
    const QString damage = line.damage.isEmpty() ? entry.damage : line.damage;
    if (damage.isEmpty()) {
        _history.Read(line.number, entry);
    } else {
        _rows.append({line.number, {}, {}, damage, true});
    }
}

void LogDecoder::finish()
{
    _history.Finish();
}

QVector<LogRow> LogDecoder::consumeRows()
{
    return std::exchange(_rows, {});
}

void LogDecoder::add(const Decode::Event& event)
{
    _rows.append({event.line, event.at, Decode::TitleOf(event),
                  Decode::PiecesOf(event).join(QStringLiteral(", ")),
                  !event.problem.isEmpty() || event.HasFailed()});
    if (_keepsRecords) {
        record(event);
    }
}

/// A measurement begins with the first result of a function, and ends with that of another or as the log
/// says.
void LogDecoder::record(const Decode::Event& event)
{
    if (event.measurement != Decode::Event::Measurement::Unchanged) {
        _record.reset();
    }
    const Result result = Decode::ResultOf(event);
    if (result.isEmpty() || result.function() == Function::Monitoring || !event.at.isValid()) {
        return;
    }
    const Settings settings(result.function());
    if (_record.isNull() || _record->settings != settings) {
        _record.reset(new Record);
        _record->settings = settings;
        _recordBegan = event.at;
        _records.append({event.at.toString() + QLatin1Char(' ') + _record->function().title, _record});
    }
    _record->append(secondsBetween(_recordBegan, event.at), result);
}

} // namespace Panel
