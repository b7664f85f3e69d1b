#include "cli/words/format.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "cli/words/text.h"
#include "client/words/errorguide.h"
#include "client/words/readings.h"
#include "decode/frames/words.h"

namespace Cli
{

namespace
{

QByteArray Line(const QString& label, int width, const QString& text)
{
    return (label.leftJustified(width) + QStringLiteral("  ") + text + QLatin1Char('\n')).toUtf8();
}

} // namespace

Shown ShowReading(float reading)
{
    const QString text = Decode::Text(reading);
    return {text, VesmarClient::IsPresent(reading) ? text.toDouble() : QJsonValue()};
}

Shown Show(bool value)
{
    return {value ? Text::tr("yes") : Text::tr("no"), value};
}

Shown Show(int value)
{
    return {QString::number(value), value};
}

Shown Show(const QDateTime& value)
{
    return {Decode::Text(value),
            value.isValid() ? value.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")) : QJsonValue()};
}

Shown Show(Vesmar::Error value)
{
    Shown shown = Show<Vesmar::Error>(value);
    shown.text = Decode::Text(value);
    QJsonObject json = shown.json.toObject();
    const VesmarClient::ErrorAdvice advice = VesmarClient::Advice(value);
    json.insert(QStringLiteral("meaning"), VesmarClient::Meaning(value));
    json.insert(QStringLiteral("causes"), QJsonArray::fromStringList(advice.causes));
    json.insert(QStringLiteral("nextStep"), advice.nextStep);
    shown.json = json;
    return shown;
}

QString TimeStamp(const QDateTime& time)
{
    return time.toUTC().toString(Qt::ISODateWithMs);
}

QByteArray JsonLine(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

QByteArray ChangeText(const QDateTime& time, const QString& property, const Shown& value)
{
    constexpr int WidthOfProperties = 25;
    return time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz  ")).toUtf8() +
           Line(property, WidthOfProperties, value.text);
}

QJsonObject ChangeFields(const QString& property, const Shown& value)
{
    return {{QStringLiteral("property"), property}, {QStringLiteral("value"), value.json}};
}

QByteArray InfoLine(const QString& label, const QString& text)
{
    constexpr int WidthOfLabels = 16;
    return Line(label + QLatin1Char(':'), WidthOfLabels, text);
}

} // namespace Cli
