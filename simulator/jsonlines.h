#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

namespace Simulator
{

/// On which lines the members and elements of a JSON text stand, which Qt's parser does not tell. The text
/// has to be one that Qt's parser has accepted.
class JsonLines
{
public:
    /// Throws JsonError when an object has the same key twice.
    explicit JsonLines(const QByteArray& text);

    /// Of the key of a member or of the beginning of an element. The whole text has an empty path.
    int LineOf(const QString& path) const { return _lines.value(path, 1); }

    /// The path of what is in an object or array under a key or number: a JSON pointer, "/faults/0/delay".
    static QString PathBelow(const QString& path, const QString& name);

    /// Of the byte at an offset, counted from 1.
    static int LineAt(const QByteArray& text, int offset);

private:
    void ReadValue(const QString& path);
    void ReadMembers(const QString& path);
    void ReadElements(const QString& path);
    void ReadLiteral();
    QString ReadString();
    void NoteLine(const QString& path);
    QString Below(const QString& path, const QString& name) const;
    char Current() const;
    void Step();
    void SkipBlanks();

    QByteArray _text;
    int _position = 0;
    int _line = 1;
    int _depth = 0;
    QHash<QString, int> _lines;
};

} // namespace Simulator
