#include "manual/manpage.h"

#include <CLI/CLI.hpp>

#include <algorithm>

#include "manual/commandtree.h"
#include "manual/footer.h"
#include "manual/scdoc.h"

namespace Manual
{

namespace
{

std::string Reference(const std::string& page)
{
    return Bold(page) + "(1)";
}

std::string Titled(const std::string& title, const std::string& text)
{
    return text.empty() ? std::string() : "\n# " + title + "\n\n" + text;
}

std::string SeeAlso(const std::string& page)
{
    return Titled("SEE ALSO", Reference(page) + "\n");
}

std::string Heading(const std::string& name, const std::string& version, std::string description)
{
    if (!description.empty() && description.back() == '.') {
        description.pop_back();
    }
    return name + "(1) \"" + version + "\"\n" + Titled("NAME", name + " - " + Escaped(description) + "\n");
}

/// An entry: what is typed, and below it what that means.
std::string Entry(const std::string& given, const std::string& meaning)
{
    return given + "\n\t" + Escaped(meaning) + "\n";
}

std::string Entry(const CLI::Option& option)
{
    std::string given;
    for (const std::string& flag : FlagsOf(option)) {
        given += (given.empty() ? "" : ", ") + Bold(flag);
    }
    const std::string value = ValueOf(option);
    if (!value.empty()) {
        given += (given.empty() ? "" : " ") + Underlined(value);
    }
    return Entry(given, option.get_description() + (option.get_required() ? "; required" : ""));
}

std::string OptionEntries(const std::vector<const CLI::Option*>& options)
{
    std::string text;
    for (const CLI::Option* option : options) {
        text += (text.empty() ? "" : "\n") + Entry(*option);
    }
    return text;
}

/// All options but the one for help, which the page has named already.
std::vector<const CLI::Option*> OwnOptions(const CLI::App& command)
{
    std::vector<const CLI::Option*> options = Options(command);
    options.erase(std::remove(options.begin(), options.end(), command.get_help_ptr()), options.end());
    return options;
}

std::string CommandSections(const CLI::App& app)
{
    std::string text;
    for (const CLI::App* command : Commands(app)) {
        text += (text.empty() ? "## " : "\n## ") + command->get_name() + "\n\n" +
                Escaped(command->get_description()) + "\n";
        const std::string options = OptionEntries(OwnOptions(*command));
        text += (options.empty() ? "" : "\n") + options;
    }
    return text;
}

std::string CommandReferences(const CLI::App& program)
{
    std::string text;
    for (const CLI::App* command : Commands(program)) {
        text += (text.empty() ? "" : "\n") +
                Entry(Reference(program.get_name() + "-" + command->get_name()), command->get_description());
    }
    return text;
}

/// The description stands before the options and the commands, all other sections behind them.
std::string Body(const CLI::App& app, const std::string& commands)
{
    std::string before = Titled("SYNOPSIS", Literal(UsageLines(app)));
    std::string behind = Titled("OPTIONS", OptionEntries(Options(app))) + Titled("SUBCOMMANDS", commands);
    for (const Section& section : SectionsOf(app.get_footer())) {
        (section.title == "DESCRIPTION" ? before : behind) += Titled(section.title, section.text);
    }
    return before + behind;
}

} // namespace

ManPage WholePage(const CLI::App& program, const std::string& relatedPage)
{
    const std::string& name = program.get_name();
    return {name, Heading(name, program.version(), program.get_description()) +
                      Body(program, CommandSections(program)) + SeeAlso(relatedPage)};
}

std::vector<ManPage> PagePerCommand(const CLI::App& program, const std::string& relatedPage)
{
    const std::string& name = program.get_name();
    const std::string version = program.version();
    std::vector<ManPage> pages{{name, Heading(name, version, program.get_description()) +
                                          Body(program, CommandReferences(program)) + SeeAlso(relatedPage)}};
    for (const CLI::App* command : Commands(program)) {
        const std::string page = name + "-" + command->get_name();
        pages.push_back({page, Heading(page, version, command->get_description()) +
                                   Body(*command, CommandSections(*command)) + SeeAlso(name)});
    }
    return pages;
}

} // namespace Manual
