#pragma once

#include <sys/types.h>

#include <QDir>
#include <QFile>
#include <QVector>

/// The processes of vesmar-guard whose environment, which is that of the application, contains this.
inline QVector<pid_t> GuardsWith(const QByteArray& mark)
{
    const auto contentOf = [](const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    QVector<pid_t> guards;
    for (const QString& process : QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[1-9]*")})) {
        const QString folder = QStringLiteral("/proc/") + process;
        if (contentOf(folder + QStringLiteral("/comm")) == "vesmar-guard\n" &&
            contentOf(folder + QStringLiteral("/environ")).contains(mark)) {
            guards.append(process.toInt());
        }
    }
    return guards;
}
