#include "simulator/jsonlines.h"

#include "simulator/jsonerror.h"
#include "simulator/quoted.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cstring>

namespace Simulator
{

namespace
{

/// What is deeper has no path of its own, lest a text of brackets need memory without measure.
constexpr int DeepestPath = 8;

bool IsOneOf(char character, const char* set)
{
    return character != '\0' && std::strchr(set, character) != nullptr;
}

} // namespace

JsonLines::JsonLines(const QByteArray& text) : _text(text)
{
    SkipBlanks();
    ReadValue({});
}

/// With the two escapes of a pointer, lest a key with a slash be taken for two.
QString JsonLines::PathBelow(const QString& path, const QString& name)
{
    QString escaped = name;
    escaped.replace(QLatin1Char('~'), QLatin1String("~0")).replace(QLatin1Char('/'), QLatin1String("~1"));
    return path + QLatin1Char('/') + escaped;
}

int JsonLines::LineAt(const QByteArray& text, int offset)
{
    return 1 + text.left(offset).count('\n');
}

void JsonLines::ReadValue(const QString& path)
{
    NoteLine(path);
    ++_depth;
    switch (Current()) {
    case '{':
        ReadMembers(path);
        break;
    case '[':
        ReadElements(path);
        break;
    case '"':
        ReadString();
        break;
    default:
        ReadLiteral();
        break;
    }
    --_depth;
    SkipBlanks();
}

void JsonLines::ReadMembers(const QString& path)
{
    do {
        Step();
        SkipBlanks();
        if (Current() != '"') {
            break; // an object without members
        }
        const int line = _line;
        const QString key = ReadString();
        const QString below = Below(path, key);
        if (below != path && _lines.contains(below)) {
            throw JsonError(line, QStringLiteral("%1: the key is there twice; keep one").arg(Quoted(key)));
        }
        _lines.insert(below, _lines.value(below, line));
        SkipBlanks();
        Step();
        SkipBlanks();
        ReadValue(below);
    } while (Current() == ',');
    Step();
}

void JsonLines::ReadElements(const QString& path)
{
    int index = 0;
    do {
        Step();
        SkipBlanks();
        if (Current() == ']') {
            break; // an array without elements
        }
        ReadValue(Below(path, QString::number(index)));
        ++index;
    } while (Current() == ',');
    Step();
}

void JsonLines::ReadLiteral()
{
    while (_position < _text.size() && !IsOneOf(Current(), ",]} \t\r\n")) {
        Step();
    }
}

/// With its escapes undone.
QString JsonLines::ReadString()
{
    const int first = _position;
    Step();
    while (_position < _text.size() && Current() != '"') {
        if (Current() == '\\') {
            Step();
        }
        Step();
    }
    Step();
    const QByteArray literal = _text.mid(first, _position - first);
    return QJsonDocument::fromJson('[' + literal + ']').array().at(0).toString();
}

void JsonLines::NoteLine(const QString& path)
{
    _lines.insert(path, _lines.value(path, _line));
}

QString JsonLines::Below(const QString& path, const QString& name) const
{
    return _depth > DeepestPath ? path : PathBelow(path, name);
}

char JsonLines::Current() const
{
    return _position < _text.size() ? _text.at(_position) : '\0';
}

void JsonLines::Step()
{
    if (Current() == '\n') {
        ++_line;
    }
    ++_position;
}

void JsonLines::SkipBlanks()
{
    while (IsOneOf(Current(), " \t\r\n\xEF\xBB\xBF")) {
        Step();
    }
}

} // namespace Simulator
