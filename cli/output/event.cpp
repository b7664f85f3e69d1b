#include "cli/output/event.h"

#include "cli/words/exitstatus.h"
#include "cli/words/text.h"
#include "cli/words/values.h"

namespace Cli
{

namespace
{

using Outcome = Ending::Outcome;

QString Name(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Done:
        return QStringLiteral("done");
    case Outcome::Failed:
        return QStringLiteral("failed");
    case Outcome::Aborted:
        return QStringLiteral("aborted");
    case Outcome::Interrupted:
        return QStringLiteral("interrupted");
    case Outcome::LinkLost:
        return QStringLiteral("link-lost");
    case Outcome::UpdateMode:
        return QStringLiteral("update-mode");
    }
    return {};
}

} // namespace

Ending DoneWith(const QString& message)
{
    return {ExitStatus::Done, Outcome::Done, message, QString()};
}

Ending EndedBySignal(int signalNumber)
{
    return {ExitStatus::Signalled + signalNumber, Outcome::Interrupted,
            Text::tr("Ended by signal %1.").arg(signalNumber), QStringLiteral("signal")};
}

QByteArray EventLine(const QDateTime& time, const QString& event, const QJsonObject& fields)
{
    QJsonObject json = fields;
    json.insert(QStringLiteral("event"), event);
    json.insert(QStringLiteral("time"), TimeStamp(time));
    return JsonLine(json);
}

QByteArray ResultLine(const QDateTime& time, const Ending& ending, const QJsonObject& fields)
{
    const bool hasError = ending.error != VesmarClient::Error::NoErrors;
    QJsonObject json = fields;
    json.insert(QStringLiteral("status"), ending.status);
    json.insert(QStringLiteral("outcome"), Name(ending.outcome));
    json.insert(QStringLiteral("message"), ending.message);
    json.insert(QStringLiteral("reason"), ending.reason.isEmpty() ? QJsonValue() : QJsonValue(ending.reason));
    json.insert(QStringLiteral("error"), hasError ? Show(ending.error).json : QJsonValue());
    return EventLine(time, QStringLiteral("result"), json);
}

} // namespace Cli
