#pragma once

namespace Vesmar
{

/// The path of the serial device that the instrument is wired to. The library sets it to 115200 baud, 8 data
/// bits, even parity and 1 stop bit, raw.
constexpr char SerialDevicePath[] = "/dev/ttycommunication";

} // namespace Vesmar
