#include "simulator/exchangelog.h"

#include <QDateTime>

#include <stdexcept>

namespace Simulator
{

ExchangeLog::ExchangeLog(const QString& path) : _file(path)
{
    if (!path.isEmpty() && !_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        throw std::runtime_error(
            QStringLiteral("cannot write the log %1: %2").arg(path, _file.errorString()).toStdString());
    }
}

void ExchangeLog::Write(const Exchange& exchange)
{
    const QByteArray answer = exchange.answer.isEmpty() ? QByteArrayLiteral("-") : exchange.answer.toHex();
    WriteLine(exchange.request.toHex() + ' ' + answer);
}

void ExchangeLog::Write(const QString& remark)
{
    WriteLine(remark.toUtf8());
}

void ExchangeLog::WriteUnasked(const QByteArray& bytes)
{
    WriteLine("unasked " + bytes.toHex());
}

void ExchangeLog::WriteLine(const QByteArray& text)
{
    if (!_file.isOpen()) {
        return;
    }
    const QByteArray time = QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs).toLatin1();
    _file.write(time + ' ' + text + '\n');
    _file.flush();
}

} // namespace Simulator
