#include "client/trace/tracefile.h"

#include <QFileInfo>

#include "client/words/translation.h"

namespace VesmarClient
{

Failure TraceFile::Open()
{
    const QFileInfo found(_file.fileName());
    if (found.exists() && !found.isFile()) {
        return Unwritable(Translated(QT_TRANSLATE_NOOP("VesmarClient", "it is not a regular file")));
    }
    constexpr auto Mode = QIODevice::Append | QIODevice::Unbuffered; // A crash leaves the lines before it.
    return _file.open(Mode) ? Failure() : Unwritable(_file.errorString());
}

Failure TraceFile::Write(const QString& line)
{
    if (!_file.isOpen()) {
        return {};
    }
    const QByteArray bytes = line.toUtf8() + '\n';
    if (_file.write(bytes) != bytes.size()) {
        return Unwritable(_file.errorString());
    }
    return _file.size() > _limit ? TurnOver() : Failure();
}

Failure TraceFile::TurnOver()
{
    _file.close();
    const QString older = _file.fileName() + QStringLiteral(".1");
    QFile::remove(older);
    QFile full(_file.fileName());
    return full.rename(older) ? Open() : Unwritable(full.errorString());
}

Failure TraceFile::Unwritable(const QString& reason)
{
    _file.close();
    return {Error::NoErrors,
            QStringLiteral("trace-unwritable"),
            Translated(QT_TRANSLATE_NOOP("VesmarClient", "The trace file %1 cannot be written: %2."))
                .arg(_file.fileName(), reason),
            {},
            Translated(
                QT_TRANSLATE_NOOP("VesmarClient", "Check its folder, its permissions and the free space."))};
}

} // namespace VesmarClient
