#pragma once

#include <QByteArray>
#include <QString>

namespace Cli
{

/// The number of bytes in each of the pieces in which the instrument receives its firmware.
constexpr int SectorSize = 512;

/// What an update sends.
struct UpdateFiles {
    QByteArray image;
    QByteArray confirmation;
    QString problem; ///< Why the files cannot be used; empty if they can.

    int Sectors() const { return image.size() / SectorSize; }
};

/// Reads both files and checks them, without the instrument.
UpdateFiles ReadUpdateFiles(const QString& imagePath, const QString& confirmationPath);

} // namespace Cli
