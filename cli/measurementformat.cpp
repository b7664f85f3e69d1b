#include "cli/measurementformat.h"

#include <QJsonObject>

#include <algorithm>

#include "cli/format.h"

namespace Cli
{

namespace
{

using Outcome = MeasurementSession::Outcome;
using Phase = MeasurementSession::Phase;
using Reason = MeasurementSession::Reason;
using std::chrono::milliseconds;

double Seconds(milliseconds time)
{
    return static_cast<double>(time.count()) / 1000;
}

QString Elapsed(milliseconds time)
{
    return QString::number(Seconds(time), 'f', 1) + QStringLiteral(" s");
}

QString Bar(const MeasurementProgress& progress)
{
    constexpr int Width = 20;
    const milliseconds elapsed = std::min(progress.elapsed, *progress.total);
    const auto filled =
        static_cast<int>(Width * elapsed.count() / std::max<qint64>(progress.total->count(), 1));
    return QStringLiteral(" of %1 s [%2]")
        .arg(Seconds(*progress.total))
        .arg(QString(filled, QLatin1Char('=')).leftJustified(Width));
}

QString Listed(const QVector<Reading>& readings)
{
    QString text;
    for (const Reading& reading : readings) {
        text += (text.isEmpty() ? QString() : QStringLiteral(", ")) + QLatin1String(reading.name) +
                QLatin1Char(' ') + ShowReading(reading.value).text;
    }
    return text;
}

QJsonObject Json(const QVector<Reading>& readings)
{
    QJsonObject json;
    for (const Reading& reading : readings) {
        json.insert(QLatin1String(reading.name), ShowReading(reading.value).json);
    }
    return json;
}

QJsonObject Event(const QDateTime& time, const QString& event)
{
    const QDateTime withOffset = time.toOffsetFromUtc(time.offsetFromUtc());
    return {{QStringLiteral("time"), withOffset.toString(Qt::ISODateWithMs)},
            {QStringLiteral("event"), event}};
}

QString Name(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Completed:
        return QStringLiteral("done");
    case Outcome::Aborted:
        return QStringLiteral("aborted");
    case Outcome::LinkLost:
        return QStringLiteral("link-lost");
    default:
        return QStringLiteral("failed");
    }
}

QString FailureMessage(const MeasurementSession& session)
{
    switch (session.FailureReason()) {
    case Reason::Error:
        return Show(session.FirstError()).text;
    case Reason::NotPrepared:
        return QStringLiteral("the instrument did not prepare it in time");
    case Reason::NotStarted:
        return QStringLiteral("the instrument did not start it in time");
    case Reason::OtherFunction:
        return QStringLiteral(
            "the instrument is busy with a function that was not started here, and does not "
            "stop it");
    default:
        return QStringLiteral("it ended early or without a reading, and no error was seen");
    }
}

QString LossMessage(const MeasurementSession& session)
{
    if (!session.IsStopConfirmed()) {
        return QStringLiteral(
            "Link lost, the state of the instrument is unknown: it may still be running, and "
            "high voltage may be on. Switch it off at the instrument.");
    }
    const QString lost =
        session.LostIn() == Phase::Preparing
            ? QStringLiteral("Link lost, or the measurement refused by the instrument, while preparing.")
            : QStringLiteral("Link lost in the middle of the measurement.");
    return lost + QStringLiteral(" It is back, and the instrument is confirmed to have stopped.");
}

QString FirstSentence(const QString& function, const MeasurementSession& session)
{
    switch (session.CurrentOutcome()) {
    case Outcome::Completed:
        return QStringLiteral("Measurement %1 done.").arg(function);
    case Outcome::Aborted:
        return QStringLiteral("Measurement %1 aborted.").arg(function);
    default:
        return QStringLiteral("Measurement %1 failed: %2.").arg(function, FailureMessage(session));
    }
}

} // namespace

QString LiveLine(const MeasurementProgress& progress, const QVector<Reading>& readings, int width)
{
    QString line = Elapsed(progress.elapsed).rightJustified(8);
    if (progress.total) {
        line += Bar(progress);
    }
    return (line + QStringLiteral("  ") + Listed(readings)).left(width);
}

QString PhaseLine(milliseconds elapsed, const QString& phase)
{
    return Elapsed(elapsed).rightJustified(8) + QStringLiteral("  ") + phase;
}

QString PhaseName(Phase phase)
{
    switch (phase) {
    case Phase::Preparing:
        return QStringLiteral("preparing");
    case Phase::Checking:
        return QStringLiteral("checking the object under test");
    case Phase::AwaitingMains:
        return QStringLiteral("waiting for a suitable mains voltage");
    case Phase::Starting:
        return QStringLiteral("starting");
    case Phase::Running:
        return QStringLiteral("running");
    case Phase::CleaningUp:
        return QStringLiteral("cleaning up");
    case Phase::Leaving:
        return QStringLiteral("waiting until the instrument has stopped");
    case Phase::AwaitingIdle:
    case Phase::Stopping:
    case Phase::Ended:
        break;
    }
    return {};
}

QByteArray ReadingLine(milliseconds elapsed, const QVector<Reading>& readings)
{
    return (PhaseLine(elapsed, Listed(readings)) + QLatin1Char('\n')).toUtf8();
}

QByteArray ReadingJson(const QDateTime& time, milliseconds elapsed, const QVector<Reading>& readings)
{
    QJsonObject json = Event(time, QStringLiteral("reading"));
    json.insert(QStringLiteral("elapsed"), Seconds(elapsed));
    json.insert(QStringLiteral("readings"), Json(readings));
    return JsonLine(json);
}

QByteArray EventJson(const QDateTime& time, const QString& event, const QJsonValue& value)
{
    QJsonObject json = Event(time, event);
    json.insert(QStringLiteral("value"), value);
    return JsonLine(json);
}

QByteArray CsvHeader(Vesmar::MeasurementType function)
{
    QByteArray header = "time,elapsed";
    for (const char* name : ReadingNames(function)) {
        header += ',';
        header += name;
    }
    return header + '\n';
}

QByteArray CsvRow(const QDateTime& time, milliseconds elapsed, const QVector<Reading>& readings)
{
    const QDateTime withOffset = time.toOffsetFromUtc(time.offsetFromUtc());
    QString row =
        withOffset.toString(Qt::ISODateWithMs) + QLatin1Char(',') + QString::number(Seconds(elapsed), 'f', 3);
    for (const Reading& reading : readings) {
        const Shown shown = ShowReading(reading.value);
        row += QLatin1Char(',') + (shown.json.isNull() ? QString() : shown.text);
    }
    return (row + QLatin1Char('\n')).toUtf8();
}

QString EndMessage(const QString& function, const MeasurementSession& session)
{
    if (session.CurrentOutcome() == Outcome::LinkLost) {
        return LossMessage(session);
    }
    const QString first = FirstSentence(function, session);
    if (session.IsStopConfirmed()) {
        return first + QStringLiteral(" The instrument is confirmed to have stopped.");
    }
    return first +
           QStringLiteral(" STOP NOT CONFIRMED: the instrument may still be running, and high voltage "
                          "may be on. Switch it off at the instrument.");
}

QByteArray ResultText(const QVector<Reading>& readings)
{
    constexpr int Width = 18;
    QString text;
    for (const Reading& reading : readings) {
        text += QStringLiteral("  ") + QString::fromLatin1(reading.name).leftJustified(Width) +
                ShowReading(reading.value).text + QLatin1Char('\n');
    }
    return text.toUtf8();
}

QByteArray ResultJson(const MeasurementEnd& end, const MeasurementSession& session)
{
    const bool hasError = session.FirstError() != Vesmar::Error::NoErrors;
    return JsonLine({{QStringLiteral("event"), QStringLiteral("result")},
                     {QStringLiteral("function"), end.function},
                     {QStringLiteral("outcome"), Name(session.CurrentOutcome())},
                     {QStringLiteral("status"), session.ExitStatus()},
                     {QStringLiteral("stopped"), session.IsStopConfirmed()},
                     {QStringLiteral("error"), hasError ? Show(session.FirstError()).json : QJsonValue()},
                     {QStringLiteral("message"), end.message},
                     {QStringLiteral("readings"),
                      end.readings.isEmpty() ? QJsonValue() : QJsonValue(Json(end.readings))}});
}

} // namespace Cli
