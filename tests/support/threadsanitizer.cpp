// Linked into every program that is built for ThreadSanitizer. Qt is not built for it: the sanitizer knows
// the locks of the C library, but neither Qt's mutex nor what Qt does under one.
#include <sanitizer/tsan_interface.h>

#include <QMutex>

#include "support/systemfunction.h"

extern "C" __attribute__((visibility("default"))) const char* __tsan_default_options()
{
    return "ignore_noninstrumented_modules=1";
}

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
