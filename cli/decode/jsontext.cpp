#include "cli/decode/jsontext.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringBuilder>

#include <algorithm>
#include <numeric>

namespace Cli
{

namespace
{

bool IsWrittenAsItIs(QChar letter)
{
    constexpr char16_t FirstPrintable = ' ';
    constexpr char16_t LastPrintable = '~';
    return letter >= FirstPrintable && letter <= LastPrintable && letter != QLatin1Char('"') &&
           letter != QLatin1Char('\\');
}

} // namespace

/// A document is an array or an object: the value is written as the only one of an array.
QByteArray JsonText(const QJsonValue& value)
{
    const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return array.mid(1, array.size() - 2);
}

QByteArray JsonText(const QString& text)
{
    return std::all_of(text.cbegin(), text.cend(), IsWrittenAsItIs) ? Quoted(text.toLatin1())
                                                                    : JsonText(QJsonValue(text));
}

QByteArray JsonText(qint64 number)
{
    return QByteArray::number(number);
}

QByteArray Quoted(const QByteArray& text)
{
    return '"' % text % '"';
}

JsonObjectText::JsonObjectText()
{
    constexpr int UsualMembers = 10;
    _members.reserve(UsualMembers);
}

QByteArray JsonObjectText::Text()
{
    constexpr int Braces = 2;
    constexpr int Marks = 4; // two quotes, a colon and a comma
    std::sort(_members.begin(), _members.end(),
              [](const auto& left, const auto& right) { return left.first < right.first; });
    const int size =
        std::accumulate(_members.cbegin(), _members.cend(), Braces, [](int sum, const auto& member) {
            return sum + static_cast<int>(member.first.size()) + Marks + member.second.size();
        });
    QByteArray text(size, Qt::Uninitialized);
    char* end = text.data();
    const auto write = [&end](const auto& part) { end = std::copy(part.begin(), part.end(), end); };
    std::string_view mark = "{\"";
    for (const auto& [name, value] : _members) {
        write(mark);
        write(name);
        write(std::string_view("\":"));
        write(value);
        mark = ",\"";
    }
    write(std::string_view(_members.isEmpty() ? "{}" : "}"));
    text.truncate(static_cast<int>(end - text.constData()));
    return text;
}

} // namespace Cli
