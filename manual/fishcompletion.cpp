#include <CLI/CLI.hpp>

#include "manual/completion.h"

namespace Manual
{

namespace
{

std::string Quoted(const std::set<std::string>& words)
{
    return "'" + Joined(words, "' '") + "'";
}

/// A line that sets a variable of the script, to nothing where there are no values.
std::string Set(const std::string& variable, const std::string& values)
{
    return "set -g __vesmar_" + variable + (values.empty() ? "" : " ") + values + "\n";
}

std::string PlaceFunction(const std::string& function, const Places& places)
{
    std::string text = "# What can be typed at a place. Status 1 where there is no such place.\nfunction _" +
                       function + "_place\n    " + Set("offered", "") + "    " + Set("files", "") + "    " +
                       Set("program", "") + "    switch \"$argv[1]\"\n";
    for (const auto& [candidates, names] : places) {
        text += "        case " + Quoted(names) + "\n            " +
                Set("offered", Joined(candidates.words, " ")) + "            " +
                Set("files", candidates.areFilesWanted ? "yes" : "") + "            " +
                Set("program", candidates.isProgramWanted ? "yes" : "");
    }
    return text + "        case '*'\n            return 1\n    end\n    return 0\nend\n";
}

/// The part that is the same in the scripts of all programs.
constexpr char Engine[] = R"(
# Walks from the program's name along the words to the place where the cursor is.
function __vesmar_complete
    set -l command $argv[1]
    set -l place $command
    set -l find __(string replace -a - _ $argv[1])_place
    set -l current (commandline -ct)
    set -l tokens (commandline -opc)
    for i in (seq 2 (count $tokens))
        set -l word $tokens[$i]
        if test "$place" != "$command"
            set place $command # that was the option's value
        else if $find "$command $word"
            set place "$command $word"
            string match -q -- '-*' $word; or set command $place
        end
        if test -n "$__vesmar_program"
            complete -C (string join -- ' ' (string escape -- $tokens[(math $i + 1)..]) (string escape -- $current))
            return
        end
    end
    set -l front ""
    if string match -q -- '--*=*' $current
        set -l option (string split -m 1 -- = $current)
        set front $option[1]=
        set place "$command $option[1]"
        set current $option[2]
    end
    $find $place
    for word in $__vesmar_offered
        echo "$front$word"
    end
    if test -n "$__vesmar_files"
        for file in (complete -C "'' $current")
            echo "$front$file"
        end
    end
end
)";

} // namespace

std::string FishCompletion(const CLI::App& program, const Placeholders& placeholders)
{
    const std::string& name = program.get_name();
    return "# Completes the command line of " + name + " in fish; made from what its help tells.\n\n" +
           PlaceFunction(FunctionName(program), PlacesOf(program, placeholders)) + Engine + "\ncomplete -c " +
           name + " -f -a '(__vesmar_complete " + name + ")'\n";
}

} // namespace Manual
