#pragma once

#include <stdexcept>

#include <QByteArray>
#include <QJsonObject>
#include <QString>

#include "simulator/text/jsonerror.h"

namespace Simulator
{

/// The content of a JSON text, and how long the text may be.
struct JsonKind {
    const char* name; ///< the words for the content in a sentence, such as "the faults"
    int longest;      ///< in bytes
};

/// Returns the content of a file. Throws std::runtime_error; a path that is no file, or a file that is too
/// long, is not even read.
QByteArray ReadJsonFile(const QString& path, const JsonKind& kind);

/// Returns the object that a text consists of. Throws JsonError when it is none.
QJsonObject ParseJsonObject(const QByteArray& json, const JsonKind& kind);

/// Parses the content of a file. Throws std::runtime_error, which names the file and, where it can, line and
/// key.
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
