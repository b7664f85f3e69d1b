#pragma once

#include <string>
#include <vector>

namespace CLI
{
class App;
class Option;
} // namespace CLI

namespace Manual
{

/// The commands below this one that its help shows, in the order in which they were added.
std::vector<const CLI::App*> Commands(const CLI::App& app);

/// Options and positional arguments that its help shows, in the order in which they were added.
std::vector<const CLI::Option*> Options(const CLI::App& app);

/// The forms in which it is called, one a line, without the label and its indentation.
std::vector<std::string> UsageLines(const CLI::App& app);

/// "-h", "--help"; none for a positional argument.
std::vector<std::string> FlagsOf(const CLI::Option& option);

/// What the help shows for the value, or the name of a positional argument; empty for a flag.
std::string ValueOf(const CLI::Option& option);

/// What stands between the separators.
std::vector<std::string> Split(const std::string& text, char separator);

} // namespace Manual
