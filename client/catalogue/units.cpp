#include "client/catalogue/units.h"

#include <QFileInfo>

#include <VesmarClient/functions.h>

#include "client/catalogue/unitsfile.h"

namespace VesmarClient
{

UnitsStore::UnitsStore(const QString& defaultPath)
{
    if (QFileInfo::exists(defaultPath)) {
        _defaultFailure = Replace(defaultPath);
    }
}

Units UnitsStore::Current() const
{
    const std::lock_guard lock(_mutex);
    return _units;
}

Failure UnitsStore::Replace(const QString& path)
{
    const UnitsFile file = ReadUnitsFile(path);
    if (!file.failure.isFailure()) {
        const std::lock_guard lock(_mutex);
        _units = file.units;
    }
    return file.failure;
}

UnitsStore& UnitsInUse()
{
    static UnitsStore store(QString::fromLatin1(Functions::DefaultUnitsFile));
    return store;
}

} // namespace VesmarClient
