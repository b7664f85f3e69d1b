#pragma once

#include <map>
#include <string>
#include <utility>

/// How often what was brought upon the library.
struct Counts {
    std::map<std::string, long> kinds;
    std::map<std::pair<std::string, std::string>, long> pairs; ///< Of a kind and a state.
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
