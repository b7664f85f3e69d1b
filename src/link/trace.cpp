#include "link/trace.h"

#include <QDateTime>
#include <QDebug>

#include "protocol/frames.h"
#include "protocol/payload.h"

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

QString LineToNeutralVariant(int variant)
{
    switch (variant) {
    case 1:
        return Last(QStringLiteral("Function variant: RLN"));
    case 2:
        return Last(QStringLiteral("Function variant: IEC"));
    default:
        return {};
    }
}

QString ResidualCurrentType(int type)
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

/// The log calls the mode of an RCD test its type.
QString ResidualCurrentFunction(int type)
{
    return QStringLiteral("Function name: RCD_IEC (type=%1) ").arg(type) + ResidualCurrentType(type);
}

QString FunctionName(const QByteArray& request)
{
    constexpr int CodeSize = 1;
    const auto payload = DecodePayload(request.mid(CodeSize, PreparePayloadSize));
    switch (payload ? payload->function : MeasurementType::None) {
    case MeasurementType::RLN:
    case MeasurementType::IEC:
        return QStringLiteral("Function name: RLN ") + LineToNeutralVariant(payload->variant);
    case MeasurementType::RPE:
    case MeasurementType::IPE: // It has the name of RPE on purpose.
        return Last(QStringLiteral("Function name: Rpe"));
    case MeasurementType::RISO:
        return Last(QStringLiteral("Function name: Riso"));
    case MeasurementType::ISUB:
        return Last(QStringLiteral("Function name: Isub"));
    case MeasurementType::IDELTA:
        return Last(QStringLiteral("Function name: Idelta"));
    case MeasurementType::IT:
        return Last(QStringLiteral("Function name: It"));
    case MeasurementType::POWER:
        return Last(QStringLiteral("Function name: S"));
    case MeasurementType::HVTest:
        return Last(QStringLiteral("Function name: HV"));
    case MeasurementType::RCD:
        return Last(QStringLiteral("Function name: RCD"));
    case MeasurementType::RCDIEC:
        return ResidualCurrentFunction(payload->options.mode);
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
