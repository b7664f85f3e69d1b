#pragma once

#include <termios.h>

#include <QByteArray>

/// From now on every `open` of the serial device in this process opens `path` instead. An empty path makes it
/// fail as if the device were missing, which is also how a test program begins. Ends the failures below and
/// starts a fresh record.
void RedirectSerialDevice(const QByteArray& path);

/// Where the serial device is at present; empty when it is missing.
QByteArray SerialDeviceRedirection();

/// Makes every `open` of the serial device fail with this error number.
void FailSerialDeviceOpen(int error);

/// Makes every `read` of the serial device fail, after as many more that bring bytes.
void FailSerialDeviceReads(int afterReadsWithBytes);

/// What was asked of the system for the serial device since it was last redirected.
struct SerialDeviceRecord {
    int opens = 0; ///< Tries included.
    int openFlags = 0;
    int configurations = 0; ///< Calls of `tcsetattr`, whatever came of them.
    int configurationAction = 0;
    termios configuration{}; ///< As asked for: a pseudo-terminal does not keep all of it.
};
SerialDeviceRecord RecordedSerialDevice();
