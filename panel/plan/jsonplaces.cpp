#include "panel/plan/jsonplaces.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace Panel
{

namespace
{

/// The position of the quote that ends the string which begins at this one.
int endOfString(const QByteArray& json, int begin)
{
    int position = begin + 1;
    while (json.at(position) != '"') {
        position += json.at(position) == '\\' ? 2 : 1;
    }
    return position;
}

/// A string with its quotes, as it is read.
QString decoded(const QByteArray& string)
{
    return QJsonDocument::fromJson('[' + string + ']').array().at(0).toString();
}

} // namespace

JsonPlaces::JsonPlaces(const QByteArray& json)
{
    QString lastString;
    int line = 1;
    for (int position = 0; position < json.size(); ++position) {
        const char character = json.at(position);
        if (_isElementDue && character > ' ' && character != ']') {
            _isElementDue = false;
            add(line);
        }
        if (character == '\n') {
            ++line;
        } else if (character == '"') {
            const int end = endOfString(json, position);
            lastString = decoded(json.mid(position, end - position + 1));
            position = end;
        } else if (character == ':') {
            _path.last() = lastString;
            add(line);
        } else if (character == '{' || character == '[') {
            open(character == '[');
        } else if (character == '}' || character == ']') {
            _path.removeLast();
            _elements.removeLast();
            _isElementDue = false;
        } else if (character == ',' && _elements.last() >= 0) {
            _path.last() = QString::number(++_elements.last());
            _isElementDue = true;
        }
    }
}

void JsonPlaces::open(bool isArray)
{
    _path.append(QString::number(0));
    _elements.append(isArray ? 0 : -1);
    _isElementDue = isArray;
}

void JsonPlaces::add(int line)
{
    if (_repeated.isEmpty() && _lines.contains(_path)) {
        _repeated = _path;
    }
    _lines.insert(_path, line);
}

} // namespace Panel
