#include "cli/update/updatefiles.h"

#include <QFile>
#include <QFileInfo>

namespace Cli
{

namespace
{

constexpr qint64 LargestFile = qint64{64} * 1024 * 1024; // far more than any instrument takes
constexpr int ShortestConfirmation = 2;

/// Returns the problem, or nothing. A pipe is refused: nobody knows when its writer is done.
QString Read(const char* what, const QString& path, QByteArray* content)
{
    const QString name = QLatin1String(what) + QLatin1Char(' ') + path;
    QFile file(path);
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        return QStringLiteral("%1 is not a regular file").arg(name);
    }
    if (!file.open(QIODevice::ReadOnly)) {
        return QStringLiteral("cannot read %1: %2").arg(name, file.errorString());
    }
    if (file.size() > LargestFile) {
        return QStringLiteral("%1 has %2 bytes, which is too much; check that it is the right file")
            .arg(name)
            .arg(file.size());
    }
    *content = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return QStringLiteral("cannot read %1: %2").arg(name, file.errorString());
    }
    return {};
}

QString CheckImage(const QString& path, const QByteArray& image)
{
    if (image.isEmpty()) {
        return QStringLiteral("the image %1 is empty; check that it is the right file").arg(path);
    }
    if (image.size() % SectorSize != 0) {
        return QStringLiteral(
                   "the image %1 has %2 bytes, which is not a multiple of %3; check that it is the "
                   "right file and complete")
            .arg(path)
            .arg(image.size())
            .arg(SectorSize);
    }
    return {};
}

QString CheckConfirmation(const QString& path, const QByteArray& confirmation)
{
    if (confirmation.size() < ShortestConfirmation) {
        return QStringLiteral("the confirmation %1 has fewer than %2 bytes; check that it is the right file")
            .arg(path)
            .arg(ShortestConfirmation);
    }
    return {};
}

} // namespace

UpdateFiles ReadUpdateFiles(const QString& imagePath, const QString& confirmationPath)
{
    UpdateFiles files;
    files.problem = Read("the image", imagePath, &files.image);
    if (files.problem.isEmpty()) {
        files.problem = CheckImage(imagePath, files.image);
    }
    if (files.problem.isEmpty()) {
        files.problem = Read("the confirmation", confirmationPath, &files.confirmation);
    }
    if (files.problem.isEmpty()) {
        files.problem = CheckConfirmation(confirmationPath, files.confirmation);
    }
    return files;
}

} // namespace Cli
