#pragma once

namespace Vesmar
{

/// The serial line that the instrument is wired to: 115200 baud, 8 data bits, even parity, 1 stop bit, raw.
constexpr char SerialDevicePath[] = "/dev/ttycommunication";

} // namespace Vesmar
