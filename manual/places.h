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

/// What can be typed at one place of a command line.
struct Candidates {
    std::set<std::string> words;
    bool areFilesWanted = false;
    bool isProgramWanted = false; ///< with its own command line behind it

    bool operator<(const Candidates& other) const;
};

/// The places where the same can be typed. Each is given by the words that lead to it.
using Places = std::map<Candidates, std::set<std::string>>;

Places PlacesOf(const CLI::App& program, const Placeholders& placeholders);

/// The name of the program as a part of a function's name: "_vesmar_simulator".
std::string FunctionName(const CLI::App& program);

/// The words with the separator between them.
std::string Joined(const std::set<std::string>& words, const std::string& separator);

} // namespace Manual
