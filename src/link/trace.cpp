#include "link/trace.h"

#include <QDebug>

#include "link/frames.h"

namespace Vesmar::Trace
{

namespace
{

bool IsPrepare(const QByteArray& request)
{
    return request.startsWith(Command::PrepareMeasurement);
}

unsigned FunctionNumber(const QByteArray& prepareRequest)
{
    return ByteAt(prepareRequest, 1);
}

QString FunctionOf(const QByteArray& request)
{
    return IsPrepare(request) ? QStringLiteral(" Function prepare: %1").arg(FunctionNumber(request))
                              : QString();
}

QString Hex(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex());
}

QString Exchange(const QByteArray& request, const QByteArray& response)
{
    return QStringLiteral(" \033[0;35m") + Hex(request) + QStringLiteral(" \033[0;33m") + Hex(response) +
           QStringLiteral("\033[0m[%1b]").arg(response.size());
}

QString Green(const QString& word)
{
    return QStringLiteral("\033[0;32m") + word + QStringLiteral("\033[0m");
}

QString Red(const QString& word)
{
    return QStringLiteral("\033[0;31m") + word + QStringLiteral("\033[0m");
}

QString LineToNeutralVariant(const QByteArray& request)
{
    switch (ByteAt(request, 3) | (ByteAt(request, 4) << 8U)) {
    case 1:
        return QStringLiteral("Function variant: RLN\033[0m");
    case 2:
        return QStringLiteral("Function variant: IEC\033[0m");
    default:
        return {};
    }
}

QString ResidualCurrentType(unsigned type)
{
    switch (type) {
    case 0:
        return QStringLiteral("Function type: Ub,Re\033[0m");
    case 1:
        return QStringLiteral("Function type: ta\033[0m");
    case 2:
        return QStringLiteral("Function type: Ia, tai\033[0m");
    default:
        return QStringLiteral("Function type: CLEAN UP\033[0m");
    }
}

QString ResidualCurrentFunction(const QByteArray& request)
{
    const unsigned type = ByteAt(request, 4) >> 6U;
    return QStringLiteral("Function name: RCD_IEC (type=%1) ").arg(type) + ResidualCurrentType(type);
}

QString FunctionName(const QByteArray& request)
{
    switch (FunctionNumber(request)) {
    case 1:
        return QStringLiteral("Function name: RLN ") + LineToNeutralVariant(request);
    case 2:
    case 5: // Named like 2, on purpose.
        return QStringLiteral("Function name: Rpe\033[0m");
    case 3:
        return QStringLiteral("Function name: Riso\033[0m");
    case 4:
        return QStringLiteral("Function name: Isub\033[0m");
    case 6:
        return QStringLiteral("Function name: Idelta\033[0m");
    case 7:
        return QStringLiteral("Function name: It\033[0m");
    case 8:
        return QStringLiteral("Function name: S\033[0m");
    case 9:
        return QStringLiteral("Function name: HV\033[0m");
    case 10:
        return QStringLiteral("Function name: RCD\033[0m");
    case 11:
        return ResidualCurrentFunction(request);
    default:
        return {};
    }
}

void NoteAcknowledgedCommand(const QByteArray& request)
{
    if (request.startsWith(Command::StartMeasurement)) {
        Note(Green(QStringLiteral("Function run.")));
    } else if (IsPrepare(request)) {
        Note(QStringLiteral("\033[0;32mFunction prepare: %1 ").arg(FunctionNumber(request)) +
             FunctionName(request));
    }
}

} // namespace

void Note(const QString& text)
{
    qWarning().noquote() << QDateTime::currentDateTimeUtc().toString(QStringLiteral("hh:mm:ss.zzz")) << text;
}

void Data(const QByteArray& request, const QByteArray& response)
{
    Note(Exchange(request, response) + FunctionOf(request));
}

void Acknowledged(const QByteArray& request, const QByteArray& response)
{
    Note(Exchange(request, response) + Green(QStringLiteral(" ACK")));
    NoteAcknowledgedCommand(request);
}

void Refused(const QByteArray& request, const QByteArray& response)
{
    Note(Exchange(request, response) + Red(QStringLiteral(" NACK")) + FunctionOf(request));
}

void BadChecksum(const QByteArray& request, const QByteArray& response)
{
    Note(Exchange(request, response) + Red(QStringLiteral(" CRC Invalid")) + FunctionOf(request));
}

void NoResponse(const QByteArray& request, const QByteArray& response)
{
    Note(Exchange(request, response) + Red(QStringLiteral(" No response")));
}

QString DateText(const QDateTime& dateTime)
{
    return dateTime.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss"));
}

void ReadingBuffer(const QByteArray& buffer)
{
    Note(QStringLiteral("ReadingBuffer: ") + Hex(buffer));
}

} // namespace Vesmar::Trace
