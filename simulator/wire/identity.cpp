#include "simulator/wire/identity.h"

namespace Simulator
{

QByteArray Identity::Data() const
{
    return deviceName + deviceCode + serialNumber + version + versionCode + revisionCode + buildNumber;
}

QString Identity::VersionText() const
{
    return QString::fromLatin1(version.left(1) + '.' + version.mid(1));
}

} // namespace Simulator
