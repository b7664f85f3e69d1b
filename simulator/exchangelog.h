#pragma once

#include "simulator/exchange.h"

#include <QFile>
#include <QString>

namespace Simulator
{

/// A text file with one line per exchange: UTC time, request and answer in hexadecimal, "-" for silence. In
/// between stand the bytes that nobody asked for, behind "unasked", and remarks: UTC time and text.
class ExchangeLog
{
public:
    /// An empty path means no log. Throws std::runtime_error when the file cannot be written.
    explicit ExchangeLog(const QString& path);

    void Write(const Exchange& exchange);
    void Write(const QString& remark);
    void WriteUnasked(const QByteArray& bytes);

private:
    void WriteLine(const QByteArray& text);

    QFile _file;
};

} // namespace Simulator
