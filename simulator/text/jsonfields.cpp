#include "simulator/text/jsonfields.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "simulator/text/jsonerror.h"
#include "simulator/text/quoted.h"

namespace Simulator
{

namespace
{

bool IsHexadecimal(QChar character)
{
    const ushort code = character.unicode();
    return code < 0x80 && std::isxdigit(code) != 0;
}

} // namespace

JsonFields::JsonFields(const QJsonObject& object, const JsonLines& lines, const QString& path)
    : _object(object), _lines(&lines), _path(path)
{
}

std::optional<int> JsonFields::Integer(const char* key, int lowest, int highest) const
{
    if (!Has(key)) {
        return std::nullopt;
    }
    const double value = ValueOf(key).toDouble(std::nan(""));
    if (!(value >= lowest && value <= highest && value == std::floor(value))) {
        Fail(key, QStringLiteral("must be a whole number from %1 to %2").arg(lowest).arg(highest));
    }
    return static_cast<int>(value);
}

std::optional<double> JsonFields::Number(const char* key, double lowest, double highest) const
{
    if (!Has(key)) {
        return std::nullopt;
    }
    const double value = ValueOf(key).toDouble(std::nan(""));
    if (!(value >= lowest && value <= highest)) {
        Fail(key, QStringLiteral("must be a number from %1 to %2").arg(lowest).arg(highest));
    }
    return value;
}

std::optional<QString> JsonFields::Text(const char* key) const
{
    if (!Has(key)) {
        return std::nullopt;
    }
    if (!ValueOf(key).isString()) {
        Fail(key, QStringLiteral("must be a text in double quotes"));
    }
    return ValueOf(key).toString();
}

std::optional<QByteArray> JsonFields::Bytes(const char* key, int most) const
{
    const std::optional<QString> text = Text(key);
    if (!text) {
        return std::nullopt;
    }
    const bool isHexadecimal = std::all_of(text->begin(), text->end(), IsHexadecimal);
    if (text->isEmpty() || text->size() % 2 != 0 || text->size() / 2 > most || !isHexadecimal) {
        Fail(key, QStringLiteral("must be 1 to %1 bytes of two hexadecimal digits each").arg(most));
    }
    return QByteArray::fromHex(text->toLatin1());
}

std::optional<JsonFields> JsonFields::Object(const char* key) const
{
    if (!Has(key)) {
        return std::nullopt;
    }
    if (!ValueOf(key).isObject()) {
        Fail(key, QStringLiteral("must be an object in braces"));
    }
    return JsonFields(ValueOf(key).toObject(), *_lines, PathOf(QLatin1String(key)));
}

QVector<JsonFields> JsonFields::Objects(const char* key, int most) const
{
    if (!Has(key)) {
        Fail(QStringLiteral("\"%1\" is missing").arg(QLatin1String(key)));
    }
    const QJsonArray array = ValueOf(key).toArray();
    if (!ValueOf(key).isArray() || array.size() > most) {
        Fail(key, QStringLiteral("must be an array of up to %1 objects").arg(most));
    }
    QVector<JsonFields> objects;
    for (int i = 0; i < array.size(); ++i) {
        const JsonFields fields(array.at(i).toObject(), *_lines,
                                JsonLines::PathBelow(PathOf(QLatin1String(key)), QString::number(i)));
        if (!array.at(i).isObject()) {
            fields.Fail(QStringLiteral("each of \"%1\" must be an object in braces").arg(QLatin1String(key)));
        }
        objects.append(fields);
    }
    return objects;
}

void JsonFields::RefuseOthersThan(const QStringList& keys) const
{
    for (auto member = _object.begin(); member != _object.end(); ++member) {
        if (!keys.contains(member.key())) {
            throw JsonError(_lines->LineOf(PathOf(member.key())),
                            QStringLiteral("%1: there is no such key here; there may be %2")
                                .arg(Quoted(member.key()), keys.join(QLatin1String(", "))));
        }
    }
}

void JsonFields::Fail(const char* key, const QString& sentence) const
{
    const QString name = QLatin1String(key);
    throw JsonError(_lines->LineOf(PathOf(name)), QStringLiteral("\"%1\": %2").arg(name, sentence));
}

void JsonFields::Fail(const QString& sentence) const
{
    throw JsonError(_lines->LineOf(_path), sentence);
}

} // namespace Simulator
