#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <type_traits>

#include "client/words/names.h"
#include "client/words/printable.h"

/// How values look, in text for people and in JSON for programs. What is formatted here ends its line.
namespace Cli
{

/// A value in both forms.
struct Shown {
    QString text;
    QJsonValue json;
};

/// Shows a reading; a dash and null where there is none.
Shown ShowReading(float reading);

Shown Show(bool value);
Shown Show(int value);
Shown Show(const QDateTime& value);
Shown Show(Vesmar::Error value);

/// Shows an enumerator with its name and number.
template <typename Enumeration, std::enable_if_t<std::is_enum_v<Enumeration>, int> = 0>
Shown Show(Enumeration value)
{
    const QString name = VesmarClient::Name(value);
    return {VesmarClient::NameAndNumber(value),
            QJsonObject{{QStringLiteral("name"), name.isEmpty() ? QJsonValue() : QJsonValue(name)},
                        {QStringLiteral("number"), static_cast<int>(value)}}};
}

using VesmarClient::Printable;

/// The time for programs: in UTC, with milliseconds.
QString TimeStamp(const QDateTime& time);

/// One object on one line.
QByteArray JsonLine(const QJsonObject& object);

/// A property's change, and when it was shown.
QByteArray ChangeText(const QDateTime& time, const QString& property, const Shown& value);
/// The fields of the same change in JSON.
QJsonObject ChangeFields(const QString& property, const Shown& value);

/// One labelled line for people, as `info` shows them.
QByteArray InfoLine(const QString& label, const QString& text);

} // namespace Cli
