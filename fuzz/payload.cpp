#include <memory>

#include "fuzz/finding.h"
#include "link/trace.h"
#include "protocol/payload.h"

using namespace Vesmar;

namespace
{

void CheckRpe(int code)
{
    if (const auto options = DecodeRPE(code)) {
        Require(EncodeRPE(*options) == code, "the options of RPE make the code that they come from");
    }
}

void CheckRiso(int code)
{
    const RISOOptions options = DecodeRISO(code);
    Require(options.voltage >= 0 && options.voltage < 4, "the voltage of RISO has two bits");
    if (options.mode != -1) {
        Require(EncodeRISO(options) == code, "the options of RISO make the code that they come from");
    }
}

void CheckBits(int code)
{
    Require(EncodeMode(DecodeMode(code)) == (code & 0x01), "the mode is bit 0");
    Require(EncodeConfiguration(DecodeConfiguration(code)) == (code & 0x04), "the configuration is bit 2");
}

/// The instrument's own functions send nothing but the type in the third byte.
void CheckRcd(const QByteArray& bytes, const PreparePayload& payload)
{
    const std::unique_ptr<QByteArray> encoded(
        CreateRCDPayload(payload.function, payload.options, bytes.mid(4)));
    QByteArray expected = bytes;
    expected[1] = '\0';
    expected[2] = static_cast<char>(bytes.at(2) & 0xC0);
    Require(*encoded == expected, "the options of an RCD test make the bytes that they come from");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes = Input(data, size).Rest();
    Trace::Acknowledged('P' + bytes, bytes);
    const auto payload = DecodePayload(bytes);
    const int function = bytes.isEmpty() ? 0 : static_cast<unsigned char>(bytes.at(0));
    Require(payload.has_value() == (function >= 1 && function <= 11), "there are eleven functions");
    if (!payload) {
        return 0;
    }
    CheckRpe(payload->code);
    CheckRiso(payload->code);
    CheckBits(payload->code);
    if (function >= 10 && bytes.size() == PreparePayloadSize) {
        CheckRcd(bytes, *payload);
    }
    return 0;
}
