#include <VesmarClient/identity.h>

#include <tuple>

#include <QDebug>

namespace VesmarClient
{

namespace
{

auto Fields(const Identity& identity)
{
    return std::tie(identity.deviceName, identity.deviceCode, identity.serialNumber, identity.version,
                    identity.versionCode, identity.revisionCode, identity.buildNumber);
}

} // namespace

bool operator==(const Identity& left, const Identity& right)
{
    return Fields(left) == Fields(right);
}

bool operator!=(const Identity& left, const Identity& right)
{
    return !(left == right);
}

QDebug operator<<(QDebug debug, const Identity& identity)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "Identity(" << identity.deviceName << ", code " << identity.deviceCode
                    << ", serial number " << identity.serialNumber << ", version " << identity.version
                    << ", version code " << identity.versionCode << ", revision code "
                    << identity.revisionCode << ", build " << identity.buildNumber << ')';
    return debug;
}

} // namespace VesmarClient
