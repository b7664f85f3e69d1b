#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace Manual
{

/// What the words in capitals of a command line stand for. Words in small letters stand for themselves.
struct Placeholders {
    std::set<std::string> files;                           ///< The words for the name of a file.
    std::map<std::string, std::vector<std::string>> words; ///< The words for one of some words.
};

/// A script for bash that completes the program's command line. It needs nothing but bash.
std::string Completion(const CLI::App& program, const Placeholders& placeholders);

} // namespace Manual
