#pragma once

#include <optional>

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include "simulator/text/jsonlines.h"

namespace Simulator
{

/// The members of one object of a JSON text, taken with a check each. What does not fit throws a JsonError
/// with the line and the key.
class JsonFields
{
public:
    /// The lines outlive the fields. The path is the object's.
    JsonFields(const QJsonObject& object, const JsonLines& lines, const QString& path);

    bool Has(const char* key) const { return _object.contains(QLatin1String(key)); }

    /// A whole number within its limits; nothing when there is no such key.
    std::optional<int> Integer(const char* key, int lowest, int highest) const;

    /// A number within its limits; nothing when there is no such key.
    std::optional<double> Number(const char* key, double lowest, double highest) const;

    /// Nothing when there is no such key.
    std::optional<QString> Text(const char* key) const;

    /// Bytes, at least one, written in hexadecimal; nothing when there is no such key.
    std::optional<QByteArray> Bytes(const char* key, int most) const;

    /// The fields of the object under a key; nothing when there is no such key.
    std::optional<JsonFields> Object(const char* key) const;

    /// The fields of each object of the array under a key, which has to be there.
    QVector<JsonFields> Objects(const char* key, int most) const;

    /// Throws when there is a key that is not one of these.
    void RefuseOthersThan(const QStringList& keys) const;

    /// Tells what is wrong with the value of a key.
    [[noreturn]] void Fail(const char* key, const QString& sentence) const;

    /// Tells what is wrong with the object.
    [[noreturn]] void Fail(const QString& sentence) const;

private:
    QString PathOf(const QString& key) const { return JsonLines::PathBelow(_path, key); }
    QJsonValue ValueOf(const char* key) const { return _object.value(QLatin1String(key)); }

    QJsonObject _object;
    const JsonLines* _lines;
    QString _path;
};

} // namespace Simulator
