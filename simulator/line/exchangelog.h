#pragma once

#include <QFile>
#include <QString>

#include "simulator/wire/traffic.h"

namespace Simulator
{

/// A text file with one line per exchange: UTC time, request and answer in hexadecimal, "-" for silence. In
/// between stand the bytes that nobody asked for, behind "unasked", and remarks: UTC time and text.
class ExchangeLog
{
public:
    /// An empty path means no log. Throws std::runtime_error when the file cannot be opened for writing.
    explicit ExchangeLog(const QString& path);

    // The first line that cannot be written ends the log, which is reported to the standard error.
    void Write(const Exchange& exchange);
    void Write(const QString& remark);
    void WriteUnasked(const QByteArray& bytes);

private:
    void WriteLine(const QByteArray& text);

    QString _path;
    QFile _file;
};

} // namespace Simulator
