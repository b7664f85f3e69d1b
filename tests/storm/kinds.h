#pragma once

#include <string>
#include <vector>

#include "storm/serialline.h"

/// A kind of fault, and what it does to one exchange. False if there is nothing that it could spoil there.
struct Kind {
    const char* name;
    bool (*apply)(Exchange&);
};

/// Every kind of fault that the storm brings, by name.
const std::vector<Kind>& AllKinds();
/// The program ends if there is none of this name.
const Kind& KindNamed(const std::string& name);
