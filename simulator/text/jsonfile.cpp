#include "simulator/text/jsonfile.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include "simulator/text/jsonlines.h"

namespace Simulator
{

namespace
{

std::runtime_error FileError(const QString& path, const JsonKind& kind, const QString& reason)
{
    return std::runtime_error(
        QStringLiteral("cannot read %1 %2: %3").arg(QLatin1String(kind.name), path, reason).toStdString());
}

} // namespace

/// Reads no more than there may be, and one byte that tells that there is more.
QByteArray ReadJsonFile(const QString& path, const JsonKind& kind)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        throw FileError(path, kind, QStringLiteral("it is no file; name a file"));
    }
    if (info.size() > kind.longest) {
        throw FileError(path, kind, QStringLiteral("it has more than %1 bytes").arg(kind.longest));
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw FileError(path, kind, file.errorString());
    }
    return file.read(kind.longest + 1);
}

QJsonObject ParseJsonObject(const QByteArray& json, const JsonKind& kind)
{
    if (json.size() > kind.longest) {
        throw JsonError(1, QStringLiteral("there may be up to %1 bytes; this is more").arg(kind.longest));
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        throw JsonError(JsonLines::LineAt(json, error.offset),
                        QStringLiteral("this is not valid JSON: %1").arg(error.errorString()));
    }
    if (!document.isObject()) {
        throw JsonError(1, QStringLiteral("must be an object in braces"));
    }
    return document.object();
}

} // namespace Simulator
