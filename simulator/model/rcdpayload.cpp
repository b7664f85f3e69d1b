#include "simulator/model/rcdpayload.h"

#include <cmath>

#include <QtEndian>

namespace Simulator
{

namespace
{

constexpr int PayloadSize = 8;
constexpr int FunctionIndex = 0;
constexpr int TimeFlagIndex = 1;
constexpr int TypeIndex = 2;
constexpr int OptionsIndex = 3;
constexpr int ResistanceIndex = 4;

constexpr int Rcd = 10;
constexpr int RcdIec = 11;
constexpr unsigned int UnusedTypeBits = 0x3F;
constexpr int ModeShift = 6;

unsigned int ByteAt(const QByteArray& payload, int index)
{
    return static_cast<unsigned char>(payload.at(index));
}

/// Returns whether the bytes are an earth resistance that was measured before.
bool IsResistance(const QByteArray& bytes)
{
    return std::isfinite(qFromLittleEndian<float>(bytes.constData()));
}

std::optional<RcdKind> KindOfRcd(unsigned int mode, const QByteArray& resistance)
{
    if (mode == 0 && resistance == QByteArrayLiteral("\xFF\xFF\xFF\xFF")) {
        return RcdKind::UbRe;
    }
    if ((mode == 1 || mode == 2) && IsResistance(resistance)) {
        return RcdKind::IaTa;
    }
    return std::nullopt;
}

std::optional<RcdKind> KindOfRcdIec(unsigned int mode, const QByteArray& resistance)
{
    if (mode == 0 || resistance != QByteArray(4, '\0')) {
        return std::nullopt;
    }
    return mode == 3 ? RcdKind::CleanUp : RcdKind::IaTa;
}

std::optional<RcdKind> KindOf(unsigned int function, unsigned int mode, const QByteArray& resistance)
{
    switch (function) {
    case Rcd:
        return KindOfRcd(mode, resistance);
    case RcdIec:
        return KindOfRcdIec(mode, resistance);
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<RcdPreparation> RecognizeRcdPayload(const QByteArray& payload)
{
    if (payload.size() != PayloadSize || ByteAt(payload, TimeFlagIndex) != 0 ||
        (ByteAt(payload, TypeIndex) & UnusedTypeBits) != 0) {
        return std::nullopt;
    }
    const unsigned int function = ByteAt(payload, FunctionIndex);
    const std::optional<RcdKind> kind =
        KindOf(function, ByteAt(payload, OptionsIndex) >> ModeShift, payload.mid(ResistanceIndex));
    if (!kind) {
        return std::nullopt;
    }
    return RcdPreparation{static_cast<int>(function), *kind};
}

} // namespace Simulator
