#include "simulator/text/jsonlines.h"

#include <cstring>
#include <optional>

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>
#include <QStringList>

#include "simulator/text/jsonerror.h"
#include "simulator/text/quoted.h"

namespace Simulator
{

namespace
{

bool IsOneOf(char character, const char* set)
{
    return character != '\0' && std::strchr(set, character) != nullptr;
}

/// Returns the name with the two escapes of a JSON pointer, so that a key with a slash is not mistaken for
/// two keys.
QString Escaped(QString name)
{
    return name.replace(QLatin1Char('~'), QLatin1String("~0")).replace(QLatin1Char('/'), QLatin1String("~1"));
}

/// One pass through a text, which can search for a path.
class JsonWalk
{
public:
    explicit JsonWalk(const QByteArray& text) : _text(text) {}

    /// Throws JsonError when an object has the same key twice.
    void CheckKeys()
    {
        SkipBlanks();
        ReadValue(std::nullopt);
    }

    /// Returns the line of a path, or nothing when there is no such path.
    std::optional<int> Find(const QString& path)
    {
        _names = path.split(QLatin1Char('/'));
        SkipBlanks();
        ReadValue(Below(0, QString(), _line));
        return _found;
    }

private:
    /// How many names of the path lead to a value, or nothing when the value lies elsewhere.
    using Depth = std::optional<int>;

    void ReadValue(Depth depth)
    {
        switch (Current()) {
        case '{':
            ReadMembers(depth);
            break;
        case '[':
            ReadElements(depth);
            break;
        case '"':
            SkipString();
            break;
        default:
            SkipLiteral();
            break;
        }
        SkipBlanks();
    }

    void ReadMembers(Depth depth)
    {
        QSet<QString> keys;
        do {
            Step();
            SkipBlanks();
            if (Current() != '"') {
                break; // The object has no members.
            }
            const int line = _line;
            const QString key = ReadKey();
            if (keys.contains(key)) {
                throw JsonError(line,
                                QStringLiteral("%1: the key is there twice; keep one").arg(Quoted(key)));
            }
            keys.insert(key);
            SkipBlanks();
            Step();
            SkipBlanks();
            ReadValue(depth ? Below(*depth, key, line) : std::nullopt);
        } while (Current() == ',');
        Step();
    }

    void ReadElements(Depth depth)
    {
        int index = 0;
        do {
            Step();
            SkipBlanks();
            if (Current() == ']') {
                break; // The array has no elements.
            }
            ReadValue(depth ? Below(*depth, QString::number(index), _line) : std::nullopt);
            ++index;
        } while (Current() == ',');
        Step();
    }

    /// Returns the depth of a value that has this name and stands on this line.
    Depth Below(int depth, const QString& name, int line)
    {
        if (_names.value(depth) != Escaped(name)) {
            return std::nullopt;
        }
        if (depth + 1 == _names.size()) {
            _found = line;
            return std::nullopt; // Everything inside this value has a longer path.
        }
        return depth + 1;
    }

    void SkipLiteral()
    {
        while (_position < _text.size() && !IsOneOf(Current(), ",]} \t\r\n")) {
            Step();
        }
    }

    void SkipString()
    {
        Step();
        while (_position < _text.size() && Current() != '"') {
            if (Current() == '\\') {
                Step();
            }
            Step();
        }
        Step();
    }

    /// Returns the key without its escapes.
    QString ReadKey()
    {
        const int first = _position;
        SkipString();
        const QByteArray literal = _text.mid(first, _position - first);
        return QJsonDocument::fromJson('[' + literal + ']').array().at(0).toString();
    }

    char Current() const { return _position < _text.size() ? _text.at(_position) : '\0'; }

    void Step()
    {
        if (Current() == '\n') {
            ++_line;
        }
        ++_position;
    }

    void SkipBlanks()
    {
        while (IsOneOf(Current(), " \t\r\n\xEF\xBB\xBF")) {
            Step();
        }
    }

    QByteArray _text;
    int _position = 0;
    int _line = 1;
    QStringList _names; ///< the names in the path; the first one is that of the whole text, which is empty
    std::optional<int> _found;
};

} // namespace

JsonLines::JsonLines(const QByteArray& text) : _text(text)
{
    JsonWalk(_text).CheckKeys();
}

int JsonLines::LineOf(const QString& path) const
{
    return JsonWalk(_text).Find(path).value_or(1);
}

QString JsonLines::PathBelow(const QString& path, const QString& name)
{
    return path + QLatin1Char('/') + Escaped(name);
}

int JsonLines::LineAt(const QByteArray& text, int offset)
{
    return 1 + text.left(offset).count('\n');
}

} // namespace Simulator
