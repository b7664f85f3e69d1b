#include "cli/measure/measurementformat.h"

#include <algorithm>

#include <QStringList>

#include "cli/output/event.h"
#include "cli/output/wrapped.h"
#include "cli/words/format.h"
#include "cli/words/text.h"
#include "cli/words/values.h"

namespace Cli
{

namespace
{

using std::chrono::milliseconds;
using VesmarClient::FunctionKind;
using VesmarClient::Gap;
using VesmarClient::Phase;
using VesmarClient::Reading;

double Seconds(milliseconds time)
{
    return static_cast<double>(time.count()) / 1000;
}

QString ShownSeconds(qint64 time)
{
    return QString::number(Seconds(milliseconds(time)), 'f', 1);
}

QString Elapsed(milliseconds time)
{
    return (ShownSeconds(time.count()) + QStringLiteral(" s")).rightJustified(8);
}

double ShareOf(const MeasurementProgress& progress)
{
    return std::min(1.0, Seconds(progress.elapsed) / Seconds(std::max(*progress.total, milliseconds(1))));
}

QString Danger()
{
    return Text::tr("DANGEROUS VOLTAGE");
}

/// As the instrument has sent it.
QString NumberOf(Reading reading)
{
    reading.unit.clear();
    reading.decimals = -1;
    return reading.text();
}

QString Bound(QString text)
{
    return text.replace(QLatin1Char(' '), QChar::Nbsp);
}

} // namespace

bool IsContinuous(const VesmarClient::FunctionInfo& function)
{
    return function.kind == FunctionKind::Continuous || function.kind == FunctionKind::HighVoltage;
}

QString LiveLine(const MeasurementProgress& progress, bool isDangerous, const QString& shown)
{
    QString line = Bound(Elapsed(progress.elapsed));
    if (progress.total) {
        line = Bound(Text::tr("%1 of %2 s").arg(line).arg(Seconds(*progress.total))) + QLatin1Char(' ') +
               Bar(ShareOf(progress));
    }
    if (isDangerous) {
        line += QStringLiteral("  ") + Bound(Danger());
    }
    return line + QStringLiteral("  ") + shown;
}

QByteArray TextLine(milliseconds elapsed, bool isDangerous, const QString& shown)
{
    const QString danger = isDangerous ? Danger() + QStringLiteral("  ") : QString();
    QString line = Elapsed(elapsed) + QStringLiteral("  ") + danger + shown + QLatin1Char('\n');
    return line.replace(QChar::Nbsp, QLatin1Char(' ')).toUtf8();
}

QString Listed(const QVector<Reading>& readings)
{
    QStringList parts;
    for (const Reading& reading : readings) {
        parts.append(Bound(NameOf(reading) + QLatin1Char(' ') + reading.text()));
    }
    return parts.join(QStringLiteral(", "));
}

QString NoReading(const Gap& gap)
{
    return Text::tr("no reading for %1 s").arg(gap.duration / 1000);
}

QString PhaseName(Phase phase)
{
    switch (phase) {
    case Phase::AwaitingIdle:
        return Text::tr("waiting until another function has stopped");
    case Phase::Preparing:
        return Text::tr("preparing");
    case Phase::Checking:
        return Text::tr("checking the object under test");
    case Phase::AwaitingMains:
        return Text::tr("waiting for a suitable mains voltage");
    case Phase::Starting:
        return Text::tr("starting");
    case Phase::Running:
        return Text::tr("running");
    case Phase::Stopping:
        return Text::tr("stopping");
    case Phase::CleaningUp:
        return Text::tr("cleaning up");
    case Phase::Confirming:
        return Text::tr("waiting until the instrument has stopped");
    default:
        return {};
    }
}

QJsonObject ReadingsJson(const QVector<Reading>& readings)
{
    QJsonObject json;
    for (const Reading& reading : readings) {
        json.insert(reading.name, reading.isPresent ? QJsonValue(reading.value) : QJsonValue());
    }
    return json;
}

QByteArray ReadingJson(const QDateTime& time, milliseconds elapsed, const QVector<Reading>& readings)
{
    return EventLine(time, QStringLiteral("reading"),
                     {{QStringLiteral("elapsed"), Seconds(elapsed)},
                      {QStringLiteral("readings"), ReadingsJson(readings)}});
}

QJsonObject GapFields(const Gap& gap)
{
    return {{QStringLiteral("begin"), Seconds(milliseconds(gap.begin))},
            {QStringLiteral("duration"), Seconds(milliseconds(gap.duration))}};
}

QByteArray CsvHeader(const VesmarClient::FunctionInfo& function)
{
    QString header = QStringLiteral("time,elapsed");
    for (const VesmarClient::ReadingInfo& reading : function.readings) {
        header += QLatin1Char(',') + reading.identifier;
    }
    return (header + QLatin1Char('\n')).toUtf8();
}

QByteArray CsvRow(const QDateTime& time, milliseconds elapsed, const QVector<Reading>& readings)
{
    QString row = TimeStamp(time) + QLatin1Char(',') + QString::number(Seconds(elapsed), 'f', 3);
    for (const Reading& reading : readings) {
        row += QLatin1Char(',') + (reading.isPresent ? NumberOf(reading) : QString());
    }
    return (row + QLatin1Char('\n')).toUtf8();
}

QByteArray ResultText(const QVector<Reading>& readings, const QVector<Gap>& gaps)
{
    constexpr int Width = 18;
    const auto line = [](const QString& label, const QString& value) {
        return QStringLiteral("  ") + label.leftJustified(Width) + value + QLatin1Char('\n');
    };
    QString text;
    for (const Reading& reading : readings) {
        text += line(NameOf(reading), reading.text());
    }
    for (const Gap& gap : gaps) {
        text +=
            line(Text::tr("no reading"),
                 Text::tr("for %1 s, after %2 s").arg(ShownSeconds(gap.duration), ShownSeconds(gap.begin)));
    }
    return text.toUtf8();
}

} // namespace Cli
