#pragma once

#include <utility>

#include <QMutex>
#include <QObject>

namespace Vesmar
{

/// The signal base of every cell: a template cannot declare a signal of its own.
class Notifible : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// The cell holds another value than before. Emitted on the thread that wrote, after the cell was
    /// unlocked, so that a receiver connected directly may read the cell.
    void ValueChanged();
};

/// A value that any thread may read and write, and that announces every real change.
///
/// A cell of pointers never owns, copies or deletes what it points to.
template <typename T>
class ThreadSafeProperty : public Notifible
{
public:
    explicit ThreadSafeProperty(QObject* parent = nullptr) : Notifible(parent) {}

    T Get() const
    {
        const QMutexLocker lock(&_mutex);
        return _value;
    }

    /// Stores the value and emits `ValueChanged()`, both only if it differs from the present one.
    void Set(T value)
    {
        {
            const QMutexLocker lock(&_mutex);
            if (_value == value) {
                return;
            }
            _value = std::move(value);
        }
        Q_EMIT ValueChanged();
    }

    /// Sets the value back to `T{}` and emits `ValueChanged()`; tells whether it was anything else before.
    bool TestAndClear()
    {
        {
            const QMutexLocker lock(&_mutex);
            if (_value == T{}) {
                return false;
            }
            _value = T{};
        }
        Q_EMIT ValueChanged();
        return true;
    }

private:
    T _value{};
    mutable QMutex _mutex;
};

} // namespace Vesmar
