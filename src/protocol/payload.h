#pragma once

#include <QByteArray>
#include <QtEndian>

#include <Vesmar/measurementtype.h>

/// The pieces that the settings classes build their 8-byte prepare payloads from.
namespace Vesmar
{

/// The second payload byte of the functions that have no measurement time.
constexpr int TimeNotSent = 0xFF;

/// Appends the low 8 bits.
inline void AppendByte(QByteArray& payload, int value)
{
    payload.append(static_cast<char>(value));
}

/// Appends an IEEE 754 single in little-endian order.
inline void AppendFloat(QByteArray& payload, float value)
{
    const float littleEndian = qToLittleEndian(value);
    payload.append(reinterpret_cast<const char*>(&littleEndian), sizeof littleEndian);
}

/// The payload of every function but the RCD tests, in a new array that the caller owns.
inline QByteArray* CreatePayload(MeasurementType function, int timeFlag, int code)
{
    auto* payload = new QByteArray;
    AppendByte(*payload, static_cast<int>(function));
    AppendByte(*payload, timeFlag);
    AppendByte(*payload, code);
    AppendByte(*payload, 0x00);
    payload->append(4, '\xFF');
    return payload;
}

/// An option of an RCD test at its place in a byte; one that is not set leaves zero bits. Options are not
/// masked: a value above 3 spills into the neighbouring one.
template <typename Option>
int RCDOptionBits(Option option, unsigned shift)
{
    constexpr int NotSet = -1;
    const int value = static_cast<int>(option);
    return value == NotSet ? 0x00 : static_cast<int>(static_cast<unsigned>(value) << shift);
}

/// The fourth payload byte of both RCD tests.
template <typename Mode, typename Phase, typename Quantity, typename Current>
int RCDOptions(Mode mode, Phase phase, Quantity quantity, Current current)
{
    return RCDOptionBits(mode, 6) | RCDOptionBits(phase, 4) | RCDOptionBits(quantity, 2) |
           RCDOptionBits(current, 0);
}

} // namespace Vesmar
