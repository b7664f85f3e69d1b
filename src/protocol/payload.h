#pragma once

#include <optional>

#include <QByteArray>

#include <Vesmar/measurementtype.h>

/// The data bytes of a prepare request: function, time flag, code, options of an RCD test, and four more. The
/// settings classes send what the functions below encode. Settings are numbers here, those of their
/// enumerations.
namespace Vesmar
{

constexpr int PreparePayloadSize = 8; ///< In bytes.

/// The time flag. A function without a measurement time sends it as not set.
constexpr int TimeNotSet = 0xFF;
constexpr int TimeSet = 0x05;

/// The codes of the two functions that the instrument tells apart by the code alone.
constexpr int RLNCode = 0x01;
constexpr int IECCode = 0x02;

struct RPEOptions {
    int method;
    int current;
};

/// The code of RPE. A method that does not exist counts as 1.
int EncodeRPE(RPEOptions options);

/// The options that make the code, or nothing for a code that none make. Method 0 with any current makes the
/// same code as method 1 with current 1, and current 0 the same as current 1: the result is 1 for each of
/// them.
std::optional<RPEOptions> DecodeRPE(int code);

struct RISOOptions {
    int voltage;
    int mode; ///< -1: not set, or none that exists.
};

/// The code of RISO. The voltage is not masked: a number above 3 spills into the bits of the mode.
int EncodeRISO(RISOOptions options);

RISOOptions DecodeRISO(int code);

/// The bit of the mode in the code of IPE, IDELTA and POWER. Only the number 2 sets it.
int EncodeMode(int mode);

/// 1 or 2. The code of the high-voltage test has the bit of the mode too.
int DecodeMode(int code);

/// The bit of the configuration in the code of IPE, IDELTA and IT. Only the number 2 sets it.
int EncodeConfiguration(int configuration);

/// 1 or 2.
int DecodeConfiguration(int code);

/// The code of the high-voltage test.
int EncodeHVMode(int mode);

/// The options of an RCD test; -1: not set.
struct RCDOptions {
    int mode;
    int quantity;
    int phase;
    int current;
    int type;
    bool isLNSwapped = false; ///< Shares the upper bit of the type, and only the IEC variant has it.
};

/// The options in the settings of either RCD test, without the swap of line and neutral.
template <typename Settings>
RCDOptions RCDOptionsOf(const Settings& settings)
{
    return {static_cast<int>(settings.GetMode()), static_cast<int>(settings.GetQuantity()),
            static_cast<int>(settings.GetPhase()), static_cast<int>(settings.GetCurrent()),
            static_cast<int>(settings.GetType())};
}

/// The payload of every function but the RCD tests, in a new array that the caller owns.
QByteArray* CreatePayload(MeasurementType function, int timeFlag, int code);

/// The payload of an RCD test with the four bytes that it ends with, in a new array that the caller owns.
/// Options are not masked: a number above 3 spills into the neighbouring bits.
QByteArray* CreateRCDPayload(MeasurementType function, const RCDOptions& options, const QByteArray& end);

/// The four bytes of Re: an IEEE 754 single in little-endian order.
QByteArray EncodeRe(float re);

/// What a payload asks for.
struct PreparePayload {
    MeasurementType function; ///< `IEC` too, which the payload calls a variant of RLN.
    bool isTimeSet;           ///< Of the continuous functions.
    int code;                 ///< Of every function but the RCD tests.
    int variant;              ///< Of RLN and IEC: the code and the byte behind it, low byte first.
    RCDOptions options;       ///< Of the RCD tests.
    float re; ///< Of the RCD test; `MeasurementResults::NoValue` if the payload has not its size.
};

/// Missing bytes count as 0. The result is empty if there is no such function.
std::optional<PreparePayload> DecodePayload(const QByteArray& payload);

} // namespace Vesmar
