#include "cli/measure/measurementformat.h"

#include <algorithm>
#include <array>

#include "cli/words/exitstatus.h"
#include "cli/words/format.h"
#include "client/line/diagnosis.h"
#include "client/words/named.h"

namespace Cli
{

namespace
{

using VesmarClient::DriverReading;
using VesmarClient::MeasurementSession;
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

QString Listed(const QVector<DriverReading>& readings)
{
    QString text;
    for (const DriverReading& reading : readings) {
        text += (text.isEmpty() ? QString() : QStringLiteral(", ")) + QLatin1String(reading.name) +
                QLatin1Char(' ') + ShowReading(reading.value).text;
    }
    return text;
}

QJsonObject Json(const QVector<DriverReading>& readings)
{
    QJsonObject json;
    for (const DriverReading& reading : readings) {
        json.insert(QLatin1String(reading.name), ShowReading(reading.value).json);
    }
    return json;
}

int EndingStatus(const MeasurementSession& session)
{
    if (session.CurrentOutcome() == Outcome::LinkLost) {
        return ExitStatus::LinkLost;
    }
    if (!session.IsStopConfirmed()) {
        return ExitStatus::StopNotConfirmed;
    }
    switch (session.CurrentOutcome()) {
    case Outcome::Completed:
        return ExitStatus::Done;
    case Outcome::Aborted:
        return ExitStatus::Aborted;
    default:
        return ExitStatus::Failed;
    }
}

Ending::Outcome EndingOutcome(const MeasurementSession& session)
{
    switch (session.CurrentOutcome()) {
    case Outcome::Completed:
        return IsDone(session) ? Ending::Outcome::Done : Ending::Outcome::Failed;
    case Outcome::Aborted:
        return Ending::Outcome::Aborted;
    case Outcome::LinkLost:
        return Ending::Outcome::LinkLost;
    default:
        return Ending::Outcome::Failed;
    }
}

/// A reason other than an error: for programs, and for people.
struct NamedReason {
    Reason value;
    const char* name;
    const char* message;
};

constexpr std::array<NamedReason, 5> FailureReasons{{
    {Reason::NotPrepared, "not-prepared", "the instrument did not prepare it in time"},
    {Reason::NotStarted, "not-started", "the instrument did not start it in time"},
    {Reason::NoResult, "no-result", "it ended early or without a reading, and no error was seen"},
    {Reason::FunctionLost, "function-lost",
     "the instrument gave it up in the middle, for another function or for a restart; measure again"},
    {Reason::OtherFunction, "other-function",
     "the instrument is busy with a function that was not started here, and does not stop it"},
}};

/// The most urgent reason.
QString EndingReason(const MeasurementSession& session)
{
    if (session.CurrentOutcome() == Outcome::LinkLost) {
        return QStringLiteral("link-lost");
    }
    if (session.IsStopConfirmed() || session.FailureReason() == Reason::OtherFunction) {
        return VesmarClient::NameIn(FailureReasons, session.FailureReason());
    }
    return QStringLiteral("stop-not-confirmed");
}

/// The error that is the reason; none where no error is.
Vesmar::Error EndingError(const MeasurementSession& session, Vesmar::Error presentError)
{
    if (session.CurrentOutcome() == Outcome::LinkLost) {
        return VesmarClient::ReasonForLoss(presentError);
    }
    return session.FailureReason() == Reason::Error ? session.FirstError() : Vesmar::Error::NoErrors;
}

QString FailureMessage(const MeasurementSession& session)
{
    const auto* const reason = VesmarClient::FindRow(FailureReasons, session.FailureReason());
    return reason != nullptr ? QString::fromLatin1(reason->message) : Show(session.FirstError()).text;
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

constexpr std::array<VesmarClient::Named<Phase>, 7> PhaseNames{{
    {Phase::Preparing, "preparing"},
    {Phase::Checking, "checking the object under test"},
    {Phase::AwaitingMains, "waiting for a suitable mains voltage"},
    {Phase::Starting, "starting"},
    {Phase::Running, "running"},
    {Phase::CleaningUp, "cleaning up"},
    {Phase::Leaving, "waiting until the instrument has stopped"},
}};

} // namespace

QString LiveLine(const MeasurementProgress& progress, const QVector<DriverReading>& readings, int width)
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
    return VesmarClient::NameIn(PhaseNames, phase);
}

QByteArray ReadingLine(milliseconds elapsed, const QVector<DriverReading>& readings)
{
    return (PhaseLine(elapsed, Listed(readings)) + QLatin1Char('\n')).toUtf8();
}

QByteArray ReadingJson(const QDateTime& time, milliseconds elapsed, const QVector<DriverReading>& readings)
{
    return EventLine(
        time, QStringLiteral("reading"),
        {{QStringLiteral("elapsed"), Seconds(elapsed)}, {QStringLiteral("readings"), Json(readings)}});
}

QByteArray CsvHeader(Vesmar::MeasurementType function)
{
    QByteArray header = "time,elapsed";
    for (const char* name : VesmarClient::ReadingNames(function)) {
        header += ',';
        header += name;
    }
    return header + '\n';
}

QByteArray CsvRow(const QDateTime& time, milliseconds elapsed, const QVector<DriverReading>& readings)
{
    QString row = TimeStamp(time) + QLatin1Char(',') + QString::number(Seconds(elapsed), 'f', 3);
    for (const DriverReading& reading : readings) {
        const Shown shown = ShowReading(reading.value);
        row += QLatin1Char(',') + (shown.json.isNull() ? QString() : shown.text);
    }
    return (row + QLatin1Char('\n')).toUtf8();
}

bool IsDone(const MeasurementSession& session)
{
    return session.CurrentOutcome() == Outcome::Completed && session.IsStopConfirmed();
}

Ending EndingOf(const QString& function, const MeasurementSession& session, Vesmar::Error presentError)
{
    return {EndingStatus(session), EndingOutcome(session), EndMessage(function, session),
            EndingReason(session), EndingError(session, presentError)};
}

QByteArray ResultText(const QVector<DriverReading>& readings)
{
    constexpr int Width = 18;
    QString text;
    for (const DriverReading& reading : readings) {
        text += QStringLiteral("  ") + QString::fromLatin1(reading.name).leftJustified(Width) +
                ShowReading(reading.value).text + QLatin1Char('\n');
    }
    return text.toUtf8();
}

QJsonObject ResultFields(const QString& function, bool isStopConfirmed,
                         const QVector<DriverReading>& readings)
{
    return {{QStringLiteral("function"), function},
            {QStringLiteral("stopped"), isStopConfirmed},
            {QStringLiteral("readings"), readings.isEmpty() ? QJsonValue() : QJsonValue(Json(readings))}};
}

} // namespace Cli
