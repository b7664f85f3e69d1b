#pragma once

#include <QByteArray>
#include <QString>

namespace Simulator
{

/// On which lines the members and elements of a JSON text stand, which Qt's parser does not tell. The text
/// has to be one that Qt's parser has accepted. A line is looked for when it is asked for, so that a long
/// text needs no memory for lines that nobody wants to know.
class JsonLines
{
public:
    /// Throws JsonError when an object has the same key twice.
    explicit JsonLines(const QByteArray& text);

    /// Of the key of a member or of the beginning of an element; 1 for an unknown path. The whole text has an
    /// empty path.
    int LineOf(const QString& path) const;

    /// The path of what is in an object or array under a key or number: a JSON pointer, "/faults/0/delay".
    static QString PathBelow(const QString& path, const QString& name);

    /// Of the byte at an offset, counted from 1.
    static int LineAt(const QByteArray& text, int offset);

private:
    QByteArray _text;
};

} // namespace Simulator
