#pragma once

#include <memory>

#include <QMetaObject>
#include <QThread>

#include "context/threadsafeproperty.h"

namespace Vesmar
{

/// Publishes another object in the cell and deletes the one published before.
///
/// What runs on the reader's thread right now may still hold the old object: it is deleted there, between two
/// events, or at once when that thread is this one. Without a reader, too, it is deleted at once.
template <typename Object>
void ReplaceOwned(ThreadSafeProperty<Object*>& cell, Object* object, QObject* reader)
{
    const std::shared_ptr<Object> previous(cell.Get());
    cell.Set(object);
    if (reader != nullptr && reader->thread() != QThread::currentThread()) {
        // The posted call owns the object too, and lets go of it even when it is never delivered.
        QMetaObject::invokeMethod(
            reader, [previous] {}, Qt::QueuedConnection);
    }
}

} // namespace Vesmar
