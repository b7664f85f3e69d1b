#include "simulator/model/preparepayload.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>

#include <QtEndian>

namespace Simulator
{

namespace
{

constexpr int PayloadSize = 8;
constexpr int FunctionIndex = 0;
constexpr int TimeFlagIndex = 1;
constexpr int CodeIndex = 2;
constexpr int ConstantIndex = 3;
constexpr int RcdTypeIndex = 2;
constexpr int RcdOptionsIndex = 3;
constexpr int RcdResistanceIndex = 4;

constexpr unsigned int TimeIsSet = 0x05;
constexpr unsigned int TimeIsNotSet = 0xFF;
constexpr unsigned int HighestCode = 31;

/// A set has one bit for each code that a function knows.
using CodeSet = quint32;

constexpr CodeSet Codes(std::initializer_list<unsigned int> codes)
{
    CodeSet set = 0;
    for (const unsigned int code : codes) {
        set |= 1U << code;
    }
    return set;
}

struct PayloadForm {
    Measurement measurement;
    CodeSet codes;
};

constexpr std::array<PayloadForm, 10> Forms{{
    {Measurement::Rln, Codes({0x01})},
    {Measurement::Iec, Codes({0x02})},
    {Measurement::Rpe, Codes({0x00, 0x01, 0x04, 0x05, 0x06, 0x07, 0x08, 0x0C, 0x0E})},
    {Measurement::Riso,
     Codes({0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x09, 0x0A, 0x0B, 0x10, 0x11, 0x12, 0x13})},
    {Measurement::Isub, Codes({0x00})},
    {Measurement::Ipe, Codes({0x00, 0x01, 0x04, 0x05})},
    {Measurement::Idelta, Codes({0x00, 0x01, 0x04, 0x05})},
    {Measurement::It, Codes({0x00, 0x04})},
    {Measurement::Power, Codes({0x00, 0x01})},
    {Measurement::HvTest, Codes({0x02, 0x05})},
}};

unsigned int ByteAt(const QByteArray& payload, int index)
{
    return static_cast<unsigned char>(payload.at(index));
}

bool IsKnownTimeFlag(unsigned int flag, Measurement measurement)
{
    return flag == TimeIsNotSet || (flag == TimeIsSet && !IsSingle(measurement));
}

bool Fits(const QByteArray& payload, const PayloadForm& form)
{
    const unsigned int code = ByteAt(payload, CodeIndex);
    return static_cast<int>(ByteAt(payload, FunctionIndex)) == FunctionNumber(form.measurement) &&
           IsKnownTimeFlag(ByteAt(payload, TimeFlagIndex), form.measurement) && code <= HighestCode &&
           (form.codes & 1U << code) != 0;
}

constexpr int Rcd = 10;
constexpr int RcdIec = 11;
constexpr unsigned int UnusedTypeBits = 0x3F;
constexpr int ModeShift = 6;

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

std::optional<Measurement> RecognizePayload(const QByteArray& payload)
{
    if (payload.size() != PayloadSize ||
        payload.mid(ConstantIndex) != QByteArrayLiteral("\x00\xFF\xFF\xFF\xFF")) {
        return std::nullopt;
    }
    const auto* const form =
        std::find_if(Forms.begin(), Forms.end(),
                     [&payload](const PayloadForm& candidate) { return Fits(payload, candidate); });
    return form == Forms.end() ? std::nullopt : std::optional<Measurement>(form->measurement);
}

std::optional<RcdPreparation> RecognizeRcdPayload(const QByteArray& payload)
{
    if (payload.size() != PayloadSize || ByteAt(payload, TimeFlagIndex) != 0 ||
        (ByteAt(payload, RcdTypeIndex) & UnusedTypeBits) != 0) {
        return std::nullopt;
    }
    const unsigned int function = ByteAt(payload, FunctionIndex);
    const std::optional<RcdKind> kind =
        KindOf(function, ByteAt(payload, RcdOptionsIndex) >> ModeShift, payload.mid(RcdResistanceIndex));
    if (!kind) {
        return std::nullopt;
    }
    return RcdPreparation{static_cast<int>(function), *kind};
}

} // namespace Simulator
