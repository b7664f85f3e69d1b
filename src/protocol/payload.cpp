#include "protocol/payload.h"

#include <QtEndian>

#include <Vesmar/measurementresults.h>

#include "protocol/frames.h"

namespace Vesmar
{

namespace
{

// The bits of the codes.
constexpr int RPEMethod2 = 0x01;
constexpr int RPEMethod3 = 0x08;
constexpr int RPECurrent2 = 0x04;
constexpr int RPECurrent3 = 0x06;
constexpr int RISOVoltageMask = 0x03;
constexpr unsigned RISOModeShift = 2;
constexpr int Mode2 = 0x01;
constexpr int Configuration2 = 0x04;

// The bits of the RCD options. The type stands in the code's byte.
constexpr unsigned TypeShift = 6;
constexpr int LNSwapped = 0x80;
constexpr unsigned ModeShift = 6;
constexpr unsigned PhaseShift = 4;
constexpr unsigned QuantityShift = 2;
constexpr unsigned CurrentShift = 0;

constexpr int RePosition = 4;

int RPEMethodBits(int method)
{
    switch (method) {
    case 2:
        return RPEMethod2;
    case 3:
        return RPEMethod3;
    default:
        return 0;
    }
}

int RPECurrentBits(int current)
{
    switch (current) {
    case 2:
        return RPECurrent2;
    case 3:
        return RPECurrent3;
    default:
        return 0;
    }
}

bool IsRISOMode(int mode)
{
    return mode == 1 || mode == 2 || mode == 4;
}

void AppendByte(QByteArray& payload, int lowBits)
{
    payload.append(static_cast<char>(lowBits));
}

int OptionBits(int option, unsigned shift)
{
    constexpr int NotSet = -1;
    return option == NotSet ? 0 : static_cast<int>(static_cast<unsigned>(option) << shift);
}

int OptionIn(unsigned byte, unsigned shift)
{
    constexpr unsigned Mask = 0x03;
    return static_cast<int>((byte >> shift) & Mask);
}

RCDOptions DecodeRCDOptions(unsigned typeByte, unsigned optionsByte)
{
    RCDOptions options{};
    options.mode = OptionIn(optionsByte, ModeShift);
    options.phase = OptionIn(optionsByte, PhaseShift);
    options.quantity = OptionIn(optionsByte, QuantityShift);
    options.current = OptionIn(optionsByte, CurrentShift);
    options.type = OptionIn(typeByte, TypeShift);
    options.isLNSwapped = (typeByte & LNSwapped) != 0;
    return options;
}

float DecodeReOfSettings(const QByteArray& payload)
{
    return payload.size() == PreparePayloadSize ? qFromLittleEndian<float>(payload.constData() + RePosition)
                                                : MeasurementResults::NoValue;
}

} // namespace

int EncodeRPE(RPEOptions options)
{
    return options.method == 0 ? 0 : RPEMethodBits(options.method) | RPECurrentBits(options.current);
}

std::optional<RPEOptions> DecodeRPE(int code)
{
    for (const int method : {1, 2, 3}) {
        for (const int current : {1, 2, 3}) {
            if (EncodeRPE({method, current}) == code) {
                return RPEOptions{method, current};
            }
        }
    }
    return std::nullopt;
}

int EncodeRISO(RISOOptions options)
{
    return options.voltage | (IsRISOMode(options.mode) ? options.mode << RISOModeShift : 0);
}

RISOOptions DecodeRISO(int code)
{
    constexpr int NotSet = -1;
    const int mode = code >> RISOModeShift;
    return {code & RISOVoltageMask, IsRISOMode(mode) ? mode : NotSet};
}

int EncodeMode(int mode)
{
    return mode == 2 ? Mode2 : 0;
}

int DecodeMode(int code)
{
    return (code & Mode2) != 0 ? 2 : 1;
}

int EncodeConfiguration(int configuration)
{
    return configuration == 2 ? Configuration2 : 0;
}

int DecodeConfiguration(int code)
{
    return (code & Configuration2) != 0 ? 2 : 1;
}

int EncodeHVMode(int mode)
{
    return mode == 2 ? 0x05 : 0x02;
}

QByteArray* CreatePayload(MeasurementType function, int timeFlag, int code)
{
    auto* payload = new QByteArray;
    AppendByte(*payload, static_cast<int>(function));
    AppendByte(*payload, timeFlag);
    AppendByte(*payload, code);
    AppendByte(*payload, 0x00);
    payload->append(4, '\xFF');
    return payload;
}

QByteArray* CreateRCDPayload(MeasurementType function, const RCDOptions& options, const QByteArray& end)
{
    auto* payload = new QByteArray;
    AppendByte(*payload, static_cast<int>(function));
    AppendByte(*payload, 0x00);
    AppendByte(*payload, OptionBits(options.type, TypeShift) | (options.isLNSwapped ? LNSwapped : 0));
    AppendByte(*payload, OptionBits(options.mode, ModeShift) | OptionBits(options.phase, PhaseShift) |
                             OptionBits(options.quantity, QuantityShift) |
                             OptionBits(options.current, CurrentShift));
    payload->append(end);
    return payload;
}

QByteArray EncodeRe(float re)
{
    const float littleEndian = qToLittleEndian(re);
    return {reinterpret_cast<const char*>(&littleEndian), sizeof littleEndian};
}

std::optional<PreparePayload> DecodePayload(const QByteArray& payload)
{
    const unsigned code = ByteAt(payload, 2);
    auto function = static_cast<MeasurementType>(ByteAt(payload, 0));
    if (function < MeasurementType::RLN || function > MeasurementType::RCDIEC) {
        return std::nullopt;
    }
    if (function == MeasurementType::RLN && code == IECCode) {
        function = MeasurementType::IEC;
    }
    return PreparePayload{function,
                          ByteAt(payload, 1) != TimeNotSet,
                          static_cast<int>(code),
                          static_cast<int>(WordAt(payload, 2)),
                          DecodeRCDOptions(code, ByteAt(payload, 3)),
                          DecodeReOfSettings(payload)};
}

} // namespace Vesmar
