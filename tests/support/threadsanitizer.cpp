// Linked into every program that is built for ThreadSanitizer. Qt is not built for it: the sanitizer knows
// the locks of the C library, but neither Qt's mutex nor what Qt does under one.
#include <sanitizer/tsan_interface.h>

#include <QDeadlineTimer>
#include <QMutex>
#include <QObject>
#include <QThread>

#include "support/systemfunction.h"

extern "C" __attribute__((visibility("default"))) const char* __tsan_default_options()
{
    return "ignore_noninstrumented_modules=1";
}

namespace
{

/// Stands for the arguments of all signals that wait in a queue.
char queuedArguments;

} // namespace

// These take the place of Qt's for whatever is built here.

void QMutex::lock() noexcept
{
    static auto* const qtLock = SystemFunction<void(QMutex*)>("_ZN6QMutex4lockEv");
    __tsan_mutex_pre_lock(this, 0);
    qtLock(this);
    __tsan_mutex_post_lock(this, 0, 0);
}

void QMutex::unlock() noexcept
{
    static auto* const qtUnlock = SystemFunction<void(QMutex*)>("_ZN6QMutex6unlockEv");
    __tsan_mutex_pre_unlock(this, 0);
    qtUnlock(this);
    __tsan_mutex_post_unlock(this, 0);
}

bool QMetaObject::invokeMethodImpl(QObject* object, QtPrivate::QSlotObjectBase* slot, Qt::ConnectionType type,
                                   void* result)
{
    using Invoke = bool(QObject*, QtPrivate::QSlotObjectBase*, Qt::ConnectionType, void*);
    static auto* const qtInvoke = SystemFunction<Invoke>(
        "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv");
    __tsan_release(object);
    return qtInvoke(object, slot, type, result);
}

void QMetaObject::activate(QObject* sender, const QMetaObject* metaObject, int signal, void** arguments)
{
    using Activate = void(QObject*, const QMetaObject*, int, void**);
    static auto* const qtActivate = SystemFunction<Activate>("_ZN11QMetaObject8activateEP7QObjectPKS_iPPv");
    qtActivate(sender, metaObject, signal, arguments);
    if (arguments != nullptr) {
        __tsan_release(&queuedArguments); // They have been copied meanwhile.
    }
}

/// Whoever waits for the thread sees what it has done in its events.
bool QObject::event(QEvent* event)
{
    static auto* const qtEvent = SystemFunction<bool(QObject*, QEvent*)>("_ZN7QObject5eventEP6QEvent");
    __tsan_acquire(this);
    __tsan_acquire(&queuedArguments);
    const bool isKnown = qtEvent(this, event);
    __tsan_release(QThread::currentThread());
    return isKnown;
}

bool QThread::wait(QDeadlineTimer deadline)
{
    static auto* const qtWait =
        SystemFunction<bool(QThread*, QDeadlineTimer)>("_ZN7QThread4waitE14QDeadlineTimer");
    const bool hasEnded = qtWait(this, deadline);
    if (hasEnded) {
        __tsan_acquire(this);
    }
    return hasEnded;
}
