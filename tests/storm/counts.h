#pragma once

#include <map>
#include <string>
#include <utility>

/// The names of a kind and a state.
using Pair = std::pair<std::string, std::string>;

/// How often what was brought upon the library.
struct Counts {
    std::map<std::string, long> kinds;
    std::map<Pair, long> pairs;
    long exchanges = 0;
    long operations = 0;
    long starts = 0;
    long aborts = 0; ///< Those whose time was watched.

    void Add(const std::string& kind, const std::string& state)
    {
        ++kinds[kind];
        ++pairs[{kind, state}];
    }
};
