#pragma once

#include <QByteArray>
#include <QString>

namespace Cli
{

/// A regular file that readings are written to, row by row; an existing one is overwritten. Not a pipe or a
/// terminal, whose reader could hold up the measurement.
class ReadingsFile
{
public:
    /// Opens it, and starts it with the header. `Problem()` says what went wrong.
    ReadingsFile(const QString& path, const QByteArray& header);
    ~ReadingsFile();
    ReadingsFile(const ReadingsFile&) = delete;
    ReadingsFile& operator=(const ReadingsFile&) = delete;

    /// After a problem, nothing more is written.
    void Write(const QByteArray& row);
    /// Empty where there is none.
    const QString& Problem() const { return _problem; }

private:
    QString Open();
    void FailWith(const QString& problem);

    QString _path;
    QString _problem;
    int _descriptor = -1;
};

} // namespace Cli
