#include "link/trace.h"

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

int FunctionNumber(const QByteArray& prepareRequest)
{
    return static_cast<int>(ByteAt(prepareRequest, 1));
}

Line& BeginExchange(Line& line, const QByteArray& request, const QByteArray& response)
{
    return line.Now() << "  " << Colour::Magenta << Hex{request} << " " << Colour::Yellow << Hex{response}
                      << Colour::None << "[" << static_cast<int>(response.size()) << "b]";
}

void EndWithFunction(Line& line, const QByteArray& request)
{
    if (IsPrepare(request)) {
        line << " Function prepare: " << FunctionNumber(request);
    }
}

/// Writes an exchange and what became of it.
void WriteExchange(const QByteArray& request, const QByteArray& response, Colour colour, const char* word)
{
    Line line;
    BeginExchange(line, request, response) << colour << word << Colour::None;
}

/// Writes an exchange that failed although there was an answer.
void WriteFailure(const QByteArray& request, const QByteArray& response, const char* word)
{
    Line line;
    BeginExchange(line, request, response) << Colour::Red << word << Colour::None;
    EndWithFunction(line, request);
}

/// The end of a line, its colour included. Of an unknown variant nothing is said.
const char* LineToNeutralVariant(int variant)
{
    switch (variant) {
    case 1:
        return "Function variant: RLN\033[0m";
    case 2:
        return "Function variant: IEC\033[0m";
    default:
        return "";
    }
}

const char* ResidualCurrentType(int type)
{
    switch (type) {
    case 0:
        return "Ub,Re";
    case 1:
        return "ta";
    case 2:
        return "Ia, tai";
    default:
        return "CLEAN UP";
    }
}

/// Returns null for a function without a name, and for those with more than a name.
const char* PlainName(MeasurementType function)
{
    switch (function) {
    case MeasurementType::RPE:
    case MeasurementType::IPE: // It has the name of RPE on purpose.
        return "Rpe";
    case MeasurementType::RISO:
        return "Riso";
    case MeasurementType::ISUB:
        return "Isub";
    case MeasurementType::IDELTA:
        return "Idelta";
    case MeasurementType::IT:
        return "It";
    case MeasurementType::POWER:
        return "S";
    case MeasurementType::HVTest:
        return "HV";
    case MeasurementType::RCD:
        return "RCD";
    default:
        return nullptr;
    }
}

void EndWithPayload(Line& line, const PreparePayload& payload)
{
    if (const char* name = PlainName(payload.function)) {
        line << "Function name: " << name << Colour::None;
    } else if (payload.function == MeasurementType::RLN || payload.function == MeasurementType::IEC) {
        line << "Function name: RLN " << LineToNeutralVariant(payload.variant);
    } else if (payload.function == MeasurementType::RCDIEC) {
        const int type = payload.options.mode; // The log calls the mode of an RCD test its type.
        line << "Function name: RCD_IEC (type=" << type << ") Function type: " << ResidualCurrentType(type)
             << Colour::None;
    }
}

void WritePreparation(const QByteArray& request)
{
    constexpr int CodeSize = 1;
    Line line;
    line.Now() << " " << Colour::Green << "Function prepare: " << FunctionNumber(request) << " ";
    if (const auto payload = DecodePayload(request.mid(CodeSize, PreparePayloadSize))) {
        EndWithPayload(line, *payload);
    }
}

} // namespace

void WriteIn(Colour colour, const char* text)
{
    Line() << colour << text << Colour::None;
}

void Write(const char* text)
{
    Line().Now() << " " << text;
}

void Data(const QByteArray& request, const QByteArray& response)
{
    Line line;
    BeginExchange(line, request, response);
    EndWithFunction(line, request);
}

void Acknowledged(const QByteArray& request, const QByteArray& response)
{
    WriteExchange(request, response, Colour::Green, " ACK");
    if (request.startsWith(Command::StartMeasurement)) {
        Line().Now() << " " << Colour::Green << "Function run." << Colour::None;
    } else if (IsPrepare(request)) {
        WritePreparation(request);
    }
}

void Refused(const QByteArray& request, const QByteArray& response)
{
    WriteFailure(request, response, " NACK");
}

void BadChecksum(const QByteArray& request, const QByteArray& response)
{
    WriteFailure(request, response, " CRC Invalid");
}

void NoResponse(const QByteArray& request, const QByteArray& response)
{
    WriteExchange(request, response, Colour::Red, " No response");
}

void ReadingBuffer(const QByteArray& buffer)
{
    Line().Now() << " ReadingBuffer: " << Hex{buffer};
}

} // namespace Vesmar::Trace
