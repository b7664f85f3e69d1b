#include "simulator/model/preparepayload.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace Simulator
{

namespace
{

constexpr int PayloadSize = 8;
constexpr int FunctionIndex = 0;
constexpr int TimeFlagIndex = 1;
constexpr int CodeIndex = 2;
constexpr int ConstantIndex = 3;

constexpr unsigned char TimeIsSet = 0x05;
constexpr unsigned char TimeIsNotSet = 0xFF;
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

unsigned char ByteAt(const QByteArray& payload, int index)
{
    return static_cast<unsigned char>(payload.at(index));
}

bool IsKnownTimeFlag(unsigned char flag, Measurement measurement)
{
    return flag == TimeIsNotSet || (flag == TimeIsSet && !IsSingle(measurement));
}

bool Fits(const QByteArray& payload, const PayloadForm& form)
{
    const unsigned int code = ByteAt(payload, CodeIndex);
    return ByteAt(payload, FunctionIndex) == FunctionNumber(form.measurement) &&
           IsKnownTimeFlag(ByteAt(payload, TimeFlagIndex), form.measurement) && code <= HighestCode &&
           (form.codes & 1U << code) != 0;
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

} // namespace Simulator
