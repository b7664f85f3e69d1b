#pragma once

#include <QString>

#include <VesmarClient/enumerations.h>

namespace VesmarClient
{

/// Which instrument is at the line, as it says itself. Every text is empty until it has been read.
struct VESMARCLIENT_EXPORT Identity {
    Q_GADGET
    Q_PROPERTY(QString deviceName MEMBER deviceName)
    Q_PROPERTY(QString deviceCode MEMBER deviceCode)
    Q_PROPERTY(QString serialNumber MEMBER serialNumber)
    Q_PROPERTY(QString version MEMBER version)
    Q_PROPERTY(QString versionCode MEMBER versionCode)
    Q_PROPERTY(QString revisionCode MEMBER revisionCode)
    Q_PROPERTY(QString buildNumber MEMBER buildNumber)

public:
    QString deviceName;   ///< The name of the device, up to 3 characters.
    QString deviceCode;   ///< The code of the device, up to 3 characters.
    QString serialNumber; ///< The serial number, up to 6 characters.
    QString version;      ///< The version of the firmware, such as "1.05".
    QString versionCode;  ///< The code of the version, up to 2 characters.
    QString revisionCode; ///< The code of the revision, up to 2 characters.
    QString buildNumber;  ///< The number of the firmware's build, in decimal.
};

VESMARCLIENT_EXPORT bool operator==(const Identity& left, const Identity& right);
VESMARCLIENT_EXPORT bool operator!=(const Identity& left, const Identity& right);
VESMARCLIENT_EXPORT QDebug operator<<(QDebug debug, const Identity& identity);

} // namespace VesmarClient

Q_DECLARE_METATYPE(VesmarClient::Identity)
