#pragma once

#include <termios.h>

#include <QByteArray>
#include <QList>

/// From now on every `open` of the serial device in this process opens `path` instead. An empty path makes it
/// fail as if the device were missing, which is also how a test program begins. Ends the failures below and
/// starts a fresh record.
void RedirectSerialDevice(const QByteArray& path);

/// Where the serial device is at present; empty when it is missing.
QByteArray SerialDeviceRedirection();

/// Makes every `open` of the serial device fail with this error number.
void FailSerialDeviceOpen(int error);

/// Makes `read` of the serial device fail, after as many more that bring bytes, as often as told, or for
/// ever.
void FailSerialDeviceReads(int afterReadsWithBytes, int count = -1);

/// Makes every `read` of the serial device bring a byte, so that the line never falls silent.
void LetSerialDeviceBabble();

/// Decides what becomes of the next writes to the serial device: a number above 0 is how many bytes are
/// accepted at the most, one below 0 an error number with its sign reversed.
void LimitSerialDeviceWrites(const QList<int>& limits);

/// Says that output waits in the serial device. As long as it does, `tcdrain` waits, too.
void HoldSerialDeviceOutput(bool held);

/// Makes `tcsetattr` of the serial device fail and change nothing.
void FailSerialDeviceConfiguration();

/// What was asked of the system for the serial device since it was last redirected.
struct SerialDeviceRecord {
    int opens = 0; ///< Tries included.
    int openFlags = 0;
    int configurations = 0; ///< Calls of `tcsetattr`, whatever came of them.
    int configurationAction = 0;
    termios configuration{}; ///< As asked for: a pseudo-terminal does not keep all of it.
};
SerialDeviceRecord RecordedSerialDevice();
