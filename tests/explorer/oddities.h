#pragma once

#include <string>
#include <vector>

#include "explorer/graph.h"
#include "explorer/rules.h"

/// One exception to the rules that docs/oddities.md lists.
struct Oddity {
    const char* rule;
    const char* words; ///< Its name: these words stand in docs/oddities.md.
    bool (*covers)(const Configuration& begin, const Configuration& end);
    bool isOfTheWholeAlone = false; ///< Only the whole search meets it: it takes two functions.
};

extern const std::vector<Oddity> Oddities;
