#include "simulator/line/exchangelog.h"

#include <fcntl.h>

#include <cerrno>
#include <stdexcept>

#include <QDateTime>
#include <QtDebug>

namespace Simulator
{

namespace
{

/// Returns a negative number, with the reason in errno, when opening fails. Neither opening nor writing waits
/// for the reader of a pipe, because that would hold up the instrument.
int OpenAnew(const QString& path)
{
    constexpr mode_t Permissions = 0666;
    return ::open(QFile::encodeName(path).constData(),
                  O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, Permissions);
}

QString Failure(const QString& path, const QString& reason)
{
    return QStringLiteral("cannot write the log %1: %2").arg(path, reason);
}

QString ReasonOf(const QFile& file)
{
    const QString reason = file.errorString();
    return reason == qt_error_string(EAGAIN) ? QStringLiteral("its reader does not keep up") : reason;
}

} // namespace

ExchangeLog::ExchangeLog(const QString& path) : _path(path)
{
    if (path.isEmpty()) {
        return;
    }
    const int descriptor = OpenAnew(path);
    if (descriptor < 0) {
        throw std::runtime_error(Failure(path, qt_error_string(errno)).toStdString());
    }
    _file.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
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
    const QByteArray line = time + ' ' + text + '\n';
    if (_file.write(line) != line.size()) {
        qWarning().noquote() << "vesmar-simulator:"
                             << Failure(_path, ReasonOf(_file)) + QStringLiteral("; it ends here");
        _file.close();
    }
}

} // namespace Simulator
