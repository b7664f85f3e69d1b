#include "simulator/identity.h"

namespace Simulator
{

QByteArray Identity::Data() const
{
    return deviceName + deviceCode + serialNumber + version + versionCode + revisionCode + buildNumber;
}

} // namespace Simulator
