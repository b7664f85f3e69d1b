#pragma once

#include <vector>

#include "storm/serialline.h"

/// A kind of fault, and what it does to one exchange.
struct Kind {
    const char* name;
    void (*apply)(Exchange&);
};

/// Every kind of fault that the storm brings, by name.
const std::vector<Kind>& AllKinds();
