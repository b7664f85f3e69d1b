#pragma once

#include <QString>

#include <VesmarClient/failure.h>

namespace VesmarClient
{

/// The serial device that the instrument is wired to.
class VESMARCLIENT_EXPORT SerialDevice
{
public:
    /// Its path, which is fixed.
    static QString path();
    /// Why it cannot be opened at present; empty where it can. Trying it changes nothing.
    static Failure problem();
};

} // namespace VesmarClient
