#include "context/replacedobjects.h"

#include <iterator>
#include <utility>

namespace Vesmar
{

void ReplacedObjects::Hold(std::unique_ptr<QObject> object)
{
    const std::lock_guard lock(_mutex);
    _held.push_back(std::move(object));
}

void ReplacedObjects::ReleaseHeld()
{
    {
        const std::lock_guard lock(_mutex);
        if (_held.empty()) {
            return;
        }
        std::move(_held.begin(), _held.end(), std::back_inserter(_released));
        _held.clear();
    }
    QMetaObject::invokeMethod(this, "DeleteReleased");
}

void ReplacedObjects::Release(std::unique_ptr<QObject> object)
{
    {
        const std::lock_guard lock(_mutex);
        _released.push_back(std::move(object));
    }
    QMetaObject::invokeMethod(this, "DeleteReleased");
}

void ReplacedObjects::DeleteReleased()
{
    Objects released;
    const std::lock_guard lock(_mutex);
    released.swap(_released);
}

} // namespace Vesmar
