#pragma once

#include <stdexcept>

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include "simulator/text/jsonerror.h"

namespace Simulator
{

/// What a JSON text holds, and how long it may be.
struct JsonKind {
    const char* name; ///< as a sentence calls it: "the faults"
    int longest;      ///< bytes
};

/// The content of a file. Throws std::runtime_error, before it is read when it is no file or too long.
QByteArray ReadJsonFile(const QString& path, const JsonKind& kind);

/// The object that a text is. Throws JsonError.
QJsonObject ParseJsonObject(const QByteArray& json, const JsonKind& kind);

/// What is made of the content of a file. Throws std::runtime_error, which names the file and, where it can,
/// line and key.
template <typename Content>
Content LoadJsonFile(const QString& path, const JsonKind& kind, Content (*parse)(const QByteArray&))
{
    const QByteArray json = ReadJsonFile(path, kind);
    try {
        return parse(json);
    } catch (const JsonError& error) {
        throw std::runtime_error(
            QStringLiteral("%1, %2").arg(path, QString::fromUtf8(error.what())).toStdString());
    }
}

} // namespace Simulator
