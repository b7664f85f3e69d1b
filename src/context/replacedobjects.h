#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include <QObject>

namespace Vesmar
{

/// Objects that a cell published once, until nobody can still hold them. They are deleted on the thread of
/// this object.
///
/// An object goes from thread to thread under this class's own lock, and the call that is posted carries
/// nothing: ThreadSanitizer does not know the locks of Qt's queues and would report what they carry.
class ReplacedObjects : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Keeps an object that the worker may still hold, until `ReleaseHeld()`.
    void Hold(std::unique_ptr<QObject> object);
    /// Lets go of what is held. The worker calls it between two steps, where it holds no object.
    void ReleaseHeld();
    /// Deletes an object that this thread alone may still hold: at once when called on it, otherwise between
    /// two of its events.
    void Release(std::unique_ptr<QObject> object);

private Q_SLOTS:
    void DeleteReleased();

private:
    using Objects = std::vector<std::unique_ptr<QObject>>;

    std::mutex _mutex;
    Objects _held;
    Objects _released;
};

} // namespace Vesmar
