#pragma once

#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace Manual
{

/// The source of a page of section 1, for scdoc.
struct ManPage {
    std::string name; ///< The page's name, as in "vesmar-info".
    std::string text;
};

/// One page for the program with all its commands. It points to a page that is related to it.
ManPage WholePage(const CLI::App& program, const std::string& relatedPage);

/// A page for the program, which points to a related one, and one for each of its commands with those below
/// it.
std::vector<ManPage> PagePerCommand(const CLI::App& program, const std::string& relatedPage);

} // namespace Manual
