#include "simulator/line/firmwarefile.h"

#include <stdexcept>

#include <QSaveFile>
#include <QtDebug>

namespace Simulator
{

namespace
{

QString Failure(const QSaveFile& file)
{
    return QStringLiteral("cannot save the firmware to %1: %2").arg(file.fileName(), file.errorString());
}

} // namespace

FirmwareFile::FirmwareFile(const QString& path) : _path(path)
{
    QSaveFile trial(path);
    if (!path.isEmpty() && !trial.open(QIODevice::WriteOnly)) {
        throw std::runtime_error(Failure(trial).toStdString());
    }
}

void FirmwareFile::Write(const QByteArray& image) const
{
    if (_path.isEmpty()) {
        return;
    }
    QSaveFile file(_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(image) != image.size() || !file.commit()) {
        qWarning().noquote() << "vesmar-simulator:" << Failure(file);
    }
}

} // namespace Simulator
