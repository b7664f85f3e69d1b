#include "link/trace.h"

#include <QDateTime>
#include <QDebug>

#include "protocol/frames.h"

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

QString ColourBegin(Colour colour)
{
    return QStringLiteral("\033[0;%1m").arg(static_cast<int>(colour));
}

/// Ends a text in colour.
QString Last(const QString& words)
{
    return words + QStringLiteral("\033[0m");
}

QString In(Colour colour, const QString& text)
{
    return ColourBegin(colour) + Last(text);
}

QString Exchange(const QByteArray& request, const QByteArray& response)
{
    return QLatin1Char(' ') + ColourBegin(Colour::Magenta) + Hex(request) + QLatin1Char(' ') +
           In(Colour::Yellow, Hex(response)) + QStringLiteral("[%1b]").arg(response.size());
}

/// Writes an exchange that failed although there was an answer.
void WriteFailure(const QByteArray& request, const QByteArray& response, const QString& word)
{
    Write(Exchange(request, response) + In(Colour::Red, word) + FunctionOf(request));
}

QString LineToNeutralVariant(const QByteArray& request)
{
    switch (ByteAt(request, 3) | (ByteAt(request, 4) << 8U)) {
    case 1:
        return Last(QStringLiteral("Function variant: RLN"));
    case 2:
        return Last(QStringLiteral("Function variant: IEC"));
    default:
        return {};
    }
}

QString ResidualCurrentType(unsigned type)
{
    switch (type) {
    case 0:
        return Last(QStringLiteral("Function type: Ub,Re"));
    case 1:
        return Last(QStringLiteral("Function type: ta"));
    case 2:
        return Last(QStringLiteral("Function type: Ia, tai"));
    default:
        return Last(QStringLiteral("Function type: CLEAN UP"));
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
    case 5: // It has the name of 2 on purpose.
        return Last(QStringLiteral("Function name: Rpe"));
    case 3:
        return Last(QStringLiteral("Function name: Riso"));
    case 4:
        return Last(QStringLiteral("Function name: Isub"));
    case 6:
        return Last(QStringLiteral("Function name: Idelta"));
    case 7:
        return Last(QStringLiteral("Function name: It"));
    case 8:
        return Last(QStringLiteral("Function name: S"));
    case 9:
        return Last(QStringLiteral("Function name: HV"));
    case 10:
        return Last(QStringLiteral("Function name: RCD"));
    case 11:
        return ResidualCurrentFunction(request);
    default:
        return {};
    }
}

void WriteAcknowledgedCommand(const QByteArray& request)
{
    if (request.startsWith(Command::StartMeasurement)) {
        Write(In(Colour::Green, QStringLiteral("Function run.")));
    } else if (IsPrepare(request)) {
        Write(ColourBegin(Colour::Green) +
              QStringLiteral("Function prepare: %1 ").arg(FunctionNumber(request)) + FunctionName(request));
    }
}

} // namespace

void WriteIn(Colour colour, const QString& text)
{
    qWarning().noquote() << In(colour, text);
}

void Write(const QString& text)
{
    qWarning().noquote() << QDateTime::currentDateTimeUtc().toString(QStringLiteral("hh:mm:ss.zzz")) << text;
}

void Data(const QByteArray& request, const QByteArray& response)
{
    Write(Exchange(request, response) + FunctionOf(request));
}

void Acknowledged(const QByteArray& request, const QByteArray& response)
{
    Write(Exchange(request, response) + In(Colour::Green, QStringLiteral(" ACK")));
    WriteAcknowledgedCommand(request);
}

void Refused(const QByteArray& request, const QByteArray& response)
{
    WriteFailure(request, response, QStringLiteral(" NACK"));
}

void BadChecksum(const QByteArray& request, const QByteArray& response)
{
    WriteFailure(request, response, QStringLiteral(" CRC Invalid"));
}

void NoResponse(const QByteArray& request, const QByteArray& response)
{
    Write(Exchange(request, response) + In(Colour::Red, QStringLiteral(" No response")));
}

void ReadingBuffer(const QByteArray& buffer)
{
    Write(QStringLiteral("ReadingBuffer: ") + Hex(buffer));
}

} // namespace Vesmar::Trace
