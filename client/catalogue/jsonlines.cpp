#include "client/catalogue/jsonlines.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace VesmarClient
{

namespace
{

/// The position of the quote that ends the string which begins at this one.
int EndOfString(const QByteArray& json, int begin)
{
    int position = begin + 1;
    while (json.at(position) != '"') {
        position += json.at(position) == '\\' ? 2 : 1;
    }
    return position;
}

/// A string with its quotes, as it is read.
QString Decoded(const QByteArray& string)
{
    return QJsonDocument::fromJson('[' + string + ']').array().at(0).toString();
}

} // namespace

JsonLines::JsonLines(const QByteArray& json)
{
    QStringList path;
    QString lastString;
    int line = 1;
    for (int position = 0; position < json.size(); ++position) {
        const char character = json.at(position);
        if (character == '"') {
            const int end = EndOfString(json, position);
            lastString = Decoded(json.mid(position, end - position + 1));
            position = end;
        } else if (character == ':') {
            path.last() = lastString;
            AddMember(path, line);
        } else if (character == '{' || character == '[') {
            path.append(QString());
        } else if (character == '}' || character == ']') {
            path.removeLast();
        } else if (character == '\n') {
            ++line;
        }
    }
}

void JsonLines::AddMember(const QStringList& path, int line)
{
    if (_repeated.isEmpty() && _lines.contains(path)) {
        _repeated = path;
    }
    _lines.insert(path, line);
}

} // namespace VesmarClient
