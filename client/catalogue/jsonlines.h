#pragma once

#include <QByteArray>
#include <QHash>
#include <QStringList>

namespace VesmarClient
{

/// The lines on which the members of objects stand in a JSON text, which Qt has parsed without an error.
class JsonLines
{
public:
    explicit JsonLines(const QByteArray& json);

    /// The line of the member with these names, from the outermost one on; 1 where there is none.
    int LineOf(const QStringList& path) const { return _lines.value(path, 1); }
    /// The names of the first member that its object has twice; empty where there is none.
    const QStringList& Repeated() const { return _repeated; }

private:
    void AddMember(const QStringList& path, int line);

    QHash<QStringList, int> _lines;
    QStringList _repeated;
};

} // namespace VesmarClient
