#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QVector>

#include <string_view>
#include <type_traits>
#include <utility>

namespace Cli
{

/// A value as a JSON document writes it, without white space.
QByteArray JsonText(const QJsonValue& value);
QByteArray JsonText(const QString& text);
QByteArray JsonText(qint64 number);
/// A fraction or a truth value would become another number.
template <typename Other,
          typename = std::enable_if_t<std::is_floating_point_v<Other> || std::is_same_v<Other, bool>>>
QByteArray JsonText(Other) = delete;
/// A text that has nothing to escape.
QByteArray Quoted(const QByteArray& text);

/// The text of a JSON object, the same that a QJsonObject with these members has. It is for the objects of a
/// log of a day: composing their text takes a tenth of the time.
class JsonObjectText
{
public:
    JsonObjectText();

    /// The name is a literal that has nothing to escape; each is given once.
    void Insert(std::string_view name, const QByteArray& value) { _members.append({name, value}); }

    /// The members in the order of their names.
    QByteArray Text();

private:
    QVector<std::pair<std::string_view, QByteArray>> _members;
};

} // namespace Cli
