#include <CLI/CLI.hpp>

#include "manual/completion.h"

namespace Manual
{

namespace
{

/// A line that sets a variable of the script; empty where the variable is not to be set.
std::string Set(const char* variable, bool isSet)
{
    return isSet ? std::string("        ") + variable + "=yes\n" : std::string();
}

std::string PlaceFunction(const std::string& function, const Places& places)
{
    std::string text = "# What can be typed at a place. Status 1 where there is no such place.\n" + function +
                       "_place()\n{\n    offered= are_files_wanted= is_program_wanted=\n    case \"$1\" in\n";
    for (const auto& [candidates, names] : places) {
        text += "    '" + Joined(names, "' | \\\n    '") + "')\n        offered='" +
                Joined(candidates.words, " ") + "'\n" + Set("are_files_wanted", candidates.areFilesWanted) +
                Set("is_program_wanted", candidates.isProgramWanted) + "        ;;\n";
    }
    return text + "    *)\n        return 1\n        ;;\n    esac\n}\n";
}

/// The part that is the same in the scripts of all programs for bash.
constexpr char BashEngine[] = R"(
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
    local offered are_files_wanted is_program_wanted word i
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
    mapfile -t COMPREPLY < <(compgen -W "$offered" -- "$current")
    if [ -n "$are_files_wanted" ]; then
        compopt -o filenames 2>/dev/null # it complains where nobody has pressed the key
        mapfile -t -O ${#COMPREPLY[@]} COMPREPLY < <(compgen -f -- "$current")
    fi
}
)";

/// The part that is the same in the scripts of all programs for zsh.
constexpr char ZshEngine[] = R"(
# Walks from the program's name along the words to the place where the cursor is.
_vesmar_complete()
{
    local command=$1 place=$1 find="_${1//-/_}_place" word i
    local offered are_files_wanted is_program_wanted
    for ((i = 2; i < CURRENT; i++)); do
        word=${words[i]}
        if [ "$place" != "$command" ]; then
            place=$command # that was the option's value
        elif "$find" "$command $word"; then
            place="$command $word"
            [[ $word == -* ]] || command=$place
        fi
        if [ -n "$is_program_wanted" ]; then
            shift $i words
            ((CURRENT -= i))
            _normal
            return
        fi
    done
    word=${words[CURRENT]}
    if [[ $word == --*=* ]] && compset -P '*='; then
        place="$command ${word%%=*}"
    fi
    "$find" "$place"
    compadd -- ${=offered}
    [ -z "$are_files_wanted" ] || _files
}
)";

/// What can be typed at each place, in words that bash and zsh understand alike.
std::string Beginning(const CLI::App& program, const Placeholders& placeholders, const std::string& shell)
{
    return "# Completes the command line of " + program.get_name() + " in " + shell +
           "; made from what its help tells.\n\n" +
           PlaceFunction(FunctionName(program), PlacesOf(program, placeholders));
}

/// The function that completes the program.
std::string Entry(const CLI::App& program)
{
    return "\n" + FunctionName(program) + "()\n{\n    _vesmar_complete " + program.get_name() + "\n}\n";
}

} // namespace

std::string BashCompletion(const CLI::App& program, const Placeholders& placeholders)
{
    return Beginning(program, placeholders, "bash") + BashEngine + Entry(program) + "complete -F " +
           FunctionName(program) + " " + program.get_name() + "\n";
}

std::string ZshCompletion(const CLI::App& program, const Placeholders& placeholders)
{
    return "#compdef " + program.get_name() + "\n" + Beginning(program, placeholders, "zsh") + ZshEngine +
           Entry(program) + FunctionName(program) + "\n";
}

} // namespace Manual
