#pragma once

#include <QByteArray>
#include <QString>

namespace Cli
{

/// A regular file to which readings are written row by row. An existing file is overwritten. A pipe or a
/// terminal is refused: its reader could hold up the measurement.
class ReadingsFile
{
public:
    /// Opens the file, and writes the header. `Problem()` says what went wrong.
    ReadingsFile(const QString& path, const QByteArray& header);
    ~ReadingsFile();
    ReadingsFile(const ReadingsFile&) = delete;
    ReadingsFile& operator=(const ReadingsFile&) = delete;

    /// After a problem, nothing more is written.
    void Write(const QByteArray& row);
    /// What went wrong first; empty where nothing did.
    const QString& Problem() const { return _problem; }

private:
    QString Open();
    void FailWith(const QString& problem);

    QString _path;
    QString _problem;
    int _descriptor = -1;
};

} // namespace Cli
