#pragma once

#include <QByteArray>
#include <QString>

#include <VesmarClient/failure.h>

namespace Panel
{

/// What a file contains, or the reason why that is not known: words that can end a sentence.
struct FileContent {
    QByteArray bytes;
    QString problem;
};

/// Reads a regular file of at most `limit` bytes. A pipe is refused: nobody knows when its writer is done.
FileContent readFile(const QString& path, qint64 limit);

/// Writes a new file as a whole or not at all. A file that is there already is told and stays as it is.
VesmarClient::Failure writeNewFile(const QString& path, const QByteArray& bytes);

} // namespace Panel
