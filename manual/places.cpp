#include "manual/places.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <tuple>

#include "manual/commandtree.h"

namespace Manual
{

namespace
{

bool StandsForItself(const std::string& word)
{
    return std::all_of(word.begin(), word.end(), [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9') ||
               character == '-';
    });
}

void AddValues(const CLI::Option& option, const Placeholders& placeholders, Candidates* candidates)
{
    for (const std::string& part : Split(ValueOf(option), '|')) {
        if (StandsForItself(part)) {
            candidates->words.insert(part);
        } else if (placeholders.files.count(part) > 0) {
            candidates->areFilesWanted = true;
        } else if (const auto found = placeholders.words.find(part); found != placeholders.words.end()) {
            candidates->words.insert(found->second.begin(), found->second.end());
        }
    }
}

/// A command that passes unknown words to the one above it has the options of both.
std::vector<const CLI::Option*> OptionsTaken(const CLI::App& app)
{
    std::vector<const CLI::Option*> options = Options(app);
    if (app.get_fallthrough() && app.get_parent() != nullptr) {
        for (const CLI::Option* option : OptionsTaken(*app.get_parent())) {
            if (option->nonpositional()) {
                options.push_back(option);
            }
        }
    }
    return options;
}

/// Whether "--" and a program that the command runs come after its options.
bool RunsPrograms(const CLI::App& app, const std::string& place)
{
    const std::vector<std::string> usage = UsageLines(app);
    return std::any_of(usage.begin(), usage.end(), [&place](const std::string& line) {
        return line.find(place + " [OPTIONS] -- PROGRAM") == 0;
    });
}

void AddPlaces(const CLI::App& app, const std::string& place, const Placeholders& placeholders,
               Places* places)
{
    Candidates here;
    for (const CLI::App* command : Commands(app)) {
        here.words.insert(command->get_name());
        AddPlaces(*command, place + " " + command->get_name(), placeholders, places);
    }
    for (const CLI::Option* option : OptionsTaken(app)) {
        if (!option->nonpositional()) {
            AddValues(*option, placeholders, &here);
            continue;
        }
        Candidates values;
        AddValues(*option, placeholders, &values);
        for (const std::string& flag : FlagsOf(*option)) {
            here.words.insert(flag);
            if (!ValueOf(*option).empty()) {
                (*places)[values].insert(std::string(place).append(" ").append(flag));
            }
        }
    }
    if (RunsPrograms(app, place)) {
        here.words.insert("--");
        (*places)[{{}, false, true}].insert(place + " --");
    }
    (*places)[here].insert(place);
}

} // namespace

bool Candidates::operator<(const Candidates& other) const
{
    return std::tie(isProgramWanted, areFilesWanted, words) <
           std::tie(other.isProgramWanted, other.areFilesWanted, other.words);
}

Places PlacesOf(const CLI::App& program, const Placeholders& placeholders)
{
    Places places;
    AddPlaces(program, program.get_name(), placeholders, &places);
    return places;
}

std::string FunctionName(const CLI::App& program)
{
    std::string function = "_" + program.get_name();
    std::replace(function.begin(), function.end(), '-', '_');
    return function;
}

std::string Joined(const std::set<std::string>& words, const std::string& separator)
{
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : separator) + word;
    }
    return text;
}

} // namespace Manual
