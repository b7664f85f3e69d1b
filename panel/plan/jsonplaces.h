#pragma once

#include <QByteArray>
#include <QHash>
#include <QStringList>

namespace Panel
{

/// The lines on which the members of objects and the elements of arrays stand in a JSON text, which Qt has
/// parsed without an error.
class JsonPlaces
{
public:
    explicit JsonPlaces(const QByteArray& json);

    /// The line of what has this path: the names of members, and the numbers of elements from 0 on. 1 where
    /// there is none.
    int lineOf(const QStringList& path) const { return _lines.value(path, 1); }
    bool contains(const QStringList& path) const { return _lines.contains(path); }
    /// The path of the first member that its object has twice; empty where there is none.
    const QStringList& repeated() const { return _repeated; }

private:
    void open(bool isArray);
    void add(int line);

    QStringList _path;
    QVector<int> _elements;     ///< For each open bracket the number of its element; -1 in an object.
    bool _isElementDue = false; ///< Whether what comes next is an element of an array.
    QHash<QStringList, int> _lines;
    QStringList _repeated;
};

} // namespace Panel
