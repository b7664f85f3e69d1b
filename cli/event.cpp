#include "cli/event.h"

#include "cli/format.h"

namespace Cli
{

QByteArray EventLine(const QDateTime& time, const QString& event, const QJsonObject& fields)
{
    QJsonObject json = fields;
    json.insert(QStringLiteral("event"), event);
    json.insert(QStringLiteral("time"), time.toUTC().toString(Qt::ISODateWithMs));
    return JsonLine(json);
}

QByteArray ResultLine(const QDateTime& time, const Ending& ending, const QJsonObject& fields)
{
    const bool hasError = ending.error != Vesmar::Error::NoErrors;
    QJsonObject json = fields;
    json.insert(QStringLiteral("status"), ending.status);
    json.insert(QStringLiteral("outcome"), ending.outcome);
    json.insert(QStringLiteral("message"), ending.message);
    json.insert(QStringLiteral("reason"), ending.reason.isEmpty() ? QJsonValue() : QJsonValue(ending.reason));
    json.insert(QStringLiteral("error"), hasError ? Show(ending.error).json : QJsonValue());
    return EventLine(time, QStringLiteral("result"), json);
}

} // namespace Cli
