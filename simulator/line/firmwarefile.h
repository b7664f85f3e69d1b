#pragma once

#include <QByteArray>
#include <QString>

namespace Simulator
{

/// A file that holds the firmware of the last update, whole or not at all.
class FirmwareFile
{
public:
    /// An empty path means no file. Throws std::runtime_error when there cannot be one at this path.
    explicit FirmwareFile(const QString& path);

    /// Warns in Qt's message log when the image could not be written; what was there before then stays.
    void Write(const QByteArray& image) const;

private:
    QString _path;
};

} // namespace Simulator
