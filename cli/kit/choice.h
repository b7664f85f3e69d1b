#pragma once

#include <CLI/CLI.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace Cli
{

/// A word of the command line, and the instrument's number for it.
struct Choice {
    std::string word;
    int number;
};

/// The words in one text: "ub-re, ia-ta-1, ...", or with another separator.
std::string Listed(const std::vector<Choice>& choices, const char* separator = ", ");

/// Throws the error for a value that an option does not accept. `allowed` names what it accepts.
[[noreturn]] void Refuse(const char* option, const std::string& given, const std::string& allowed);

/// Adds an option that accepts one of the words.
template <typename Settings, typename Value>
CLI::Option& AddChoice(CLI::App& command, const char* option, Settings& settings,
                       void (Settings::*set)(Value), const std::vector<Choice>& allowed,
                       const std::string& description)
{
    const auto accept = [option, &settings, set, allowed](const std::string& text) {
        const auto chosen = std::find_if(allowed.cbegin(), allowed.cend(),
                                         [&text](const Choice& choice) { return choice.word == text; });
        if (chosen == allowed.cend()) {
            Refuse(option, text, "one of " + Listed(allowed));
        }
        (settings.*set)(static_cast<Value>(chosen->number));
    };
    return *command.add_option_function<std::string>(option, accept, description)
                ->type_name(Listed(allowed, "|"));
}

/// Adds an option that accepts one of the instrument's numbers.
template <typename Settings, typename Value>
void AddChoice(CLI::App& command, const char* option, Settings& settings, void (Settings::*set)(Value),
               const std::vector<int>& allowed)
{
    std::vector<Choice> choices;
    choices.reserve(allowed.size());
    for (const int number : allowed) {
        choices.push_back({std::to_string(number), number});
    }
    AddChoice(command, option, settings, set, choices, "The instrument's number");
}

} // namespace Cli
