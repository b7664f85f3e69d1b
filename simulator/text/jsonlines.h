#pragma once

#include <QByteArray>
#include <QString>

namespace Simulator
{

/// Finds the lines on which the members and elements of a JSON text stand, because Qt's parser does not tell
/// them. Qt's parser must have accepted the text. A line is searched for when it is asked for, so that a long
/// text needs no memory for lines that nobody wants to know.
class JsonLines
{
public:
    /// Throws JsonError when an object has the same key twice.
    explicit JsonLines(const QByteArray& text);

    /// Returns the line of the key of a member, or of the beginning of an element, or 1 for an unknown path.
    /// The whole text has an empty path.
    int LineOf(const QString& path) const;

    /// Returns the path of the value that an object or array has under a key or number: a JSON pointer, such
    /// as "/faults/0/delay".
    static QString PathBelow(const QString& path, const QString& name);

    /// Returns the line of the byte at an offset, counted from 1.
    static int LineAt(const QByteArray& text, int offset);

private:
    QByteArray _text;
};

} // namespace Simulator
