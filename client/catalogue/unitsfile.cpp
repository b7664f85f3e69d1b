#include "client/catalogue/unitsfile.h"

#include <QFile>
#include <QFileInfo>

#include "client/catalogue/unitstext.h"
#include "client/words/translation.h"

namespace VesmarClient
{

namespace
{

constexpr qint64 LargestFile = qint64{64} * 1024; // Ten times what all readings need.

Failure Unreadable(const QString& path, const QString& reason)
{
    return {Error::NoErrors,
            QStringLiteral("units-unreadable"),
            Translated(QT_TRANSLATE_NOOP("VesmarClient", "The file of units %1 cannot be read: %2."))
                .arg(path, reason),
            {},
            Translated(QT_TRANSLATE_NOOP("VesmarClient", "Check its path and its permissions."))};
}

Failure Damaged(const QString& path, const UnitsText& text)
{
    return {
        Error::NoErrors,
        QStringLiteral("units-damaged"),
        Translated(QT_TRANSLATE_NOOP("VesmarClient", "The file of units %1 is damaged, line %2: %3."))
            .arg(path, QString::number(text.line), text.damage),
        {},
        Translated(QT_TRANSLATE_NOOP("VesmarClient", "Mend the file; nothing is taken from it until then."))};
}

/// Returns the reason why there is no content, or nothing. A pipe is refused: nobody knows when its writer is
/// done.
QString Read(const QString& path, QByteArray* content)
{
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        return Translated(QT_TRANSLATE_NOOP("VesmarClient", "it is not a regular file"));
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return file.errorString();
    }
    *content = file.read(LargestFile + 1);
    if (content->size() > LargestFile) {
        return Translated(QT_TRANSLATE_NOOP("VesmarClient", "it has more than %1 bytes")).arg(LargestFile);
    }
    return file.error() == QFileDevice::NoError ? QString() : file.errorString();
}

} // namespace

UnitsFile ReadUnitsFile(const QString& path)
{
    QByteArray content;
    const QString problem = Read(path, &content);
    if (!problem.isEmpty()) {
        return {{}, Unreadable(path, problem)};
    }
    const UnitsText text = ReadUnits(content);
    return text.damage.isEmpty() ? UnitsFile{text.units, {}} : UnitsFile{{}, Damaged(path, text)};
}

} // namespace VesmarClient
