#pragma once

#include <QByteArray>
#include <QString>

#include "simulator/line/descriptor.h"

namespace Simulator
{

/// The instrument's end of a serial line: the master of a pseudo-terminal. Programs open `DevicePath()`. The
/// line keeps the other end open itself, so that it stays up while no program uses it; the destructor breaks
/// it.
class PtyLine
{
public:
    /// Throws std::system_error when the system has no pseudo-terminal left.
    PtyLine();

    QString DevicePath() const;

    /// Returns what has arrived, without waiting.
    QByteArray Read();

    /// Bytes that find no room are lost, as on a wire.
    void Write(const QByteArray& bytes);

    /// Returns a descriptor that is readable when a request arrives.
    int Handle() const;

private:
    Descriptor _master;
    QString _devicePath;
    Descriptor _slave;
};

} // namespace Simulator
