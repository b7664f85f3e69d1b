#pragma once

#include <dlfcn.h>

/// The function of the C library in whose place that of a test program is.
template <typename Function>
Function* SystemFunction(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}
