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

/// The members of one object of a JSON text. Each is checked when it is read; one that does not fit throws a
/// JsonError with its line and key.
class JsonFields
{
public:
    /// The lines must outlive the fields. The path is that of the object.
    JsonFields(const QJsonObject& object, const JsonLines& lines, const QString& path);

    bool Has(const char* key) const { return _object.contains(QLatin1String(key)); }

    /// Returns a whole number within its limits, or nothing when there is no such key.
    std::optional<int> Integer(const char* key, int lowest, int highest) const;

    /// Returns a number within its limits, or nothing when there is no such key.
    std::optional<double> Number(const char* key, double lowest, double highest) const;

    /// Returns a text, or nothing when there is no such key.
    std::optional<QString> Text(const char* key) const;

    /// Returns one or more bytes that are written in hexadecimal, or nothing when there is no such key.
    std::optional<QByteArray> Bytes(const char* key, int most) const;

    /// Returns the fields of the object under a key, or nothing when there is no such key.
    std::optional<JsonFields> Object(const char* key) const;

    /// Returns the fields of each object of the array under a key. Throws when there is no such key.
    QVector<JsonFields> Objects(const char* key, int most) const;

    /// Throws when the object has a key that is not one of these.
    void RefuseOthersThan(const QStringList& keys) const;

    /// Throws an error that tells what is wrong with the value of a key.
    [[noreturn]] void Fail(const char* key, const QString& sentence) const;

    /// Throws an error that tells what is wrong with the object.
    [[noreturn]] void Fail(const QString& sentence) const;

private:
    QString PathOf(const QString& key) const { return JsonLines::PathBelow(_path, key); }
    QJsonValue ValueOf(const char* key) const { return _object.value(QLatin1String(key)); }

    QJsonObject _object;
    const JsonLines* _lines;
    QString _path;
};

} // namespace Simulator
