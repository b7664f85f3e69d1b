#pragma once

#include <QFile>

#include <VesmarClient/failure.h>

namespace VesmarClient
{

/// A file that lines are added to. When it is larger than its limit, it gets a name of its own in place of an
/// earlier one, and a new one is begun.
class TraceFile
{
public:
    TraceFile(const QString& path, qint64 limit) : _file(path), _limit(limit) {}

    /// Opens the file at its end. Only a regular file is written: a pipe could hold up the driver.
    Failure Open();
    /// Adds a line. After a failure nothing more is written.
    Failure Write(const QString& line);

private:
    Failure TurnOver();
    Failure Unwritable(const QString& reason);

    QFile _file;
    qint64 _limit;
};

} // namespace VesmarClient
