#include "cli/update/updatefiles.h"

#include <QFile>
#include <QFileInfo>

#include "cli/words/text.h"

namespace Cli
{

namespace
{

constexpr qint64 LargestFile = qint64{64} * 1024 * 1024; // far more than any instrument takes
constexpr int ShortestConfirmation = 2;

/// Returns the problem, or nothing. A pipe is refused: nobody knows when its writer is done.
QString Read(const QString& name, const QString& path, QByteArray* content)
{
    QFile file(path);
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        return Text::tr("%1 is not a regular file").arg(name);
    }
    if (!file.open(QIODevice::ReadOnly)) {
        return Text::tr("cannot read %1: %2").arg(name, file.errorString());
    }
    if (file.size() > LargestFile) {
        return Text::tr("%1 has %2 bytes, which is too much; check that it is the right file")
            .arg(name)
            .arg(file.size());
    }
    *content = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return Text::tr("cannot read %1: %2").arg(name, file.errorString());
    }
    return {};
}

QString CheckImage(const QString& path, const QByteArray& image)
{
    if (image.isEmpty()) {
        return Text::tr("the image %1 is empty; check that it is the right file").arg(path);
    }
    if (image.size() % SectorSize != 0) {
        return Text::tr("the image %1 has %2 bytes, which is not a multiple of %3; check that it is the "
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
        return Text::tr("the confirmation %1 has fewer than %2 bytes; check that it is the right file")
            .arg(path)
            .arg(ShortestConfirmation);
    }
    return {};
}

} // namespace

UpdateFiles ReadUpdateFiles(const QString& imagePath, const QString& confirmationPath)
{
    UpdateFiles files;
    files.problem = Read(Text::tr("the image %1").arg(imagePath), imagePath, &files.image);
    if (files.problem.isEmpty()) {
        files.problem = CheckImage(imagePath, files.image);
    }
    if (files.problem.isEmpty()) {
        files.problem = Read(Text::tr("the confirmation %1").arg(confirmationPath), confirmationPath,
                             &files.confirmation);
    }
    if (files.problem.isEmpty()) {
        files.problem = CheckConfirmation(confirmationPath, files.confirmation);
    }
    return files;
}

} // namespace Cli
