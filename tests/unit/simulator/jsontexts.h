#pragma once

#include <initializer_list>
#include <stdexcept>

#include <QByteArray>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

/// Returns the error of loading a path, or nothing when there is none.
template <typename Load>
QByteArray ErrorOfPath(Load load, const QString& path)
{
    try {
        load(path);
    } catch (const std::runtime_error& error) {
        return QByteArray(error.what()).replace(QFile::encodeName(path), "FILE");
    }
    return {};
}

/// Returns the error of loading a file with this content, or nothing when there is none.
template <typename Load>
QByteArray ErrorOfContent(Load load, const QByteArray& content)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("file")));
    file.open(QIODevice::WriteOnly);
    file.write(content);
    file.close();
    return ErrorOfPath(load, file.fileName());
}

inline QByteArray ContentOf(const char* path)
{
    QFile file(QString::fromUtf8(path));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

/// Returns the first block of JSON in a document.
inline QByteArray ExampleOf(const char* path)
{
    const QByteArray document = ContentOf(path);
    const int first = document.indexOf("```json\n") + 8;
    return document.mid(first, document.indexOf("```", first) - first);
}

/// Returns what an object has under these keys, each inside the one before.
inline QJsonObject Inside(QJsonObject object, std::initializer_list<const char*> keys)
{
    for (const char* key : keys) {
        object = object.value(QLatin1String(key)).toObject();
    }
    return object;
}

inline QJsonObject SchemaOf(const char* path)
{
    return QJsonDocument::fromJson(ContentOf(path)).object();
}
