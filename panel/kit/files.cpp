#include "panel/kit/files.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace Panel
{

using VesmarClient::Error;
using VesmarClient::Failure;

namespace
{

QString translated(const char* text)
{
    return QCoreApplication::translate("Panel::Files", text);
}

Failure notWritten(const QString& path, const QString& reason)
{
    return {
        Error::NoErrors,
        QStringLiteral("file-not-written"),
        translated(QT_TRANSLATE_NOOP("Panel::Files", "The file %1 was not written: %2.")).arg(path, reason),
        {},
        translated(QT_TRANSLATE_NOOP("Panel::Files", "Choose another folder or another name."))};
}

} // namespace

FileContent readFile(const QString& path, qint64 limit)
{
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        return {{}, translated(QT_TRANSLATE_NOOP("Panel::Files", "it is not a regular file"))};
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {{}, file.errorString()};
    }
    const QByteArray bytes = file.read(limit + 1);
    if (bytes.size() > limit) {
        return {{}, translated(QT_TRANSLATE_NOOP("Panel::Files", "it has more than %1 bytes")).arg(limit)};
    }
    return file.error() == QFileDevice::NoError ? FileContent{bytes, {}}
                                                : FileContent{{}, file.errorString()};
}

Failure writeNewFile(const QString& path, const QByteArray& bytes)
{
    if (QFileInfo::exists(path)) {
        return notWritten(
            path, translated(QT_TRANSLATE_NOOP("Panel::Files", "there is one with this name already")));
    }
    QSaveFile file(path);
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
    return isWritten ? Failure() : notWritten(path, file.errorString());
}

} // namespace Panel
