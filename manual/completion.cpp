#include "manual/completion.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <tuple>

#include "manual/commandtree.h"

namespace Manual
{

namespace
{

/// What can be typed at one place of a command line.
struct Candidates {
    std::set<std::string> words;
    bool areFilesWanted = false;
    bool isProgramWanted = false; ///< with its own command line behind it

    bool operator<(const Candidates& other) const
    {
        return std::tie(isProgramWanted, areFilesWanted, words) <
               std::tie(other.isProgramWanted, other.areFilesWanted, other.words);
    }
};

/// The places where the same can be typed. Each is given by the words that lead to it.
using Places = std::map<Candidates, std::set<std::string>>;

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

std::string Joined(const std::set<std::string>& words, const std::string& separator)
{
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : separator) + word;
    }
    return text;
}

/// A line that sets a variable of the script; empty where the variable is not to be set.
std::string Set(const char* variable, bool isSet)
{
    return isSet ? std::string("        ") + variable + "=yes\n" : std::string();
}

std::string PlaceFunction(const std::string& function, const Places& places)
{
    std::string text = "# What can be typed at a place. Status 1 where there is no such place.\n" + function +
                       "_place()\n{\n    words= are_files_wanted= is_program_wanted=\n    case \"$1\" in\n";
    for (const auto& [candidates, names] : places) {
        text += "    '" + Joined(names, "' | \\\n    '") + "')\n        words='" +
                Joined(candidates.words, " ") + "'\n" + Set("are_files_wanted", candidates.areFilesWanted) +
                Set("is_program_wanted", candidates.isProgramWanted) + "        ;;\n";
    }
    return text + "    *)\n        return 1\n        ;;\n    esac\n}\n";
}

/// The part that is the same in the scripts of all programs.
constexpr char Engine[] = R"(
# Completes the command line of another program, which begins at a word of this one, as that program's own does.
_vesmar_complete_program()
{
    local COMP_WORDS=("${COMP_WORDS[@]:$1}") COMP_CWORD=$((COMP_CWORD - $1))
    local program=${COMP_WORDS[0]##*/} current=${COMP_WORDS[COMP_CWORD]}
    if [ "$COMP_CWORD" -eq 0 ]; then
        mapfile -t COMPREPLY < <(compgen -c -- "$current")
        return
    fi
    local script="${BASH_SOURCE[0]%/*}/$program"
    if ! complete -p "$program" &>/dev/null && [ -f "$script" ]; then
        . "$script"
    fi
    if [[ $(complete -p "$program" 2>/dev/null) =~ \ -F\ ([^ ]+) ]]; then
        "${BASH_REMATCH[1]}" "$program" "$current" "${COMP_WORDS[COMP_CWORD - 1]}"
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}

# Walks from the program's name along the words to the place where the cursor is.
_vesmar_complete()
{
    local command=$1 place=$1 find="_${1//-/_}_place" current=${COMP_WORDS[COMP_CWORD]}
    local words are_files_wanted is_program_wanted word i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [ "$word" = = ]; then
            continue # bash takes --option=value apart
        elif [ "$place" != "$command" ]; then
            place=$command # that was the option's value
        elif "$find" "$command $word"; then
            place="$command $word"
            [[ $word == -* ]] || command=$place
        fi
        if [ -n "$is_program_wanted" ]; then
            _vesmar_complete_program $((i + 1))
            return
        fi
    done
    [ "$current" != = ] || current=
    "$find" "$place"
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    if [ -n "$are_files_wanted" ]; then
        compopt -o filenames 2>/dev/null # it complains where nobody has pressed the key
        mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -f -- "$current")
    fi
}
)";

} // namespace

std::string Completion(const CLI::App& program, const Placeholders& placeholders)
{
    const std::string& name = program.get_name();
    std::string function = "_" + name;
    std::replace(function.begin(), function.end(), '-', '_');
    Places places;
    AddPlaces(program, name, placeholders, &places);
    return "# Completes the command line of " + name + " in bash; made from what its help tells.\n\n" +
           PlaceFunction(function, places) + Engine + "\n" + function + "()\n{\n    _vesmar_complete " +
           name + "\n}\ncomplete -F " + function + " " + name + "\n";
}

} // namespace Manual
