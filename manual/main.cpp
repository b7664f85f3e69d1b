#include <CLI/CLI.hpp>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "cli/program/program.h"
#include "client/words/errorguide.h"
#include "client/words/names.h"
#include "manual/completion.h"
#include "manual/manpage.h"
#include "panel/program/commandline.h"
#include "simulator/control/scenarios.h"
#include "simulator/program/commandline.h"

// Writes sources of manual pages, for scdoc, and completions for three shells, made of the programs' own
// command lines. The arguments are the folder for the pages and the folder for the completions. Both have to
// exist.

namespace
{

using Folder = std::filesystem::path;

const std::set<std::string> FilePlaceholders{"FILE", "IMAGE", "LOG", "OUT", "PATH"};

std::vector<std::string> ErrorNumbers()
{
    std::vector<std::string> numbers;
    for (const Vesmar::Error error : VesmarClient::AllErrors()) {
        numbers.push_back(std::to_string(static_cast<int>(error)));
    }
    return numbers;
}

std::vector<std::string> ErrorNames()
{
    std::vector<std::string> names;
    for (const Vesmar::Error error : VesmarClient::AllErrors()) {
        names.push_back(VesmarClient::Name(error).toStdString());
    }
    return names;
}

std::vector<std::string> ScenarioAndFaultNames()
{
    std::vector<std::string> names;
    names.reserve(Simulator::Scenarios.size() + Simulator::Faults.size());
    for (const Simulator::NamedScenario& scenario : Simulator::Scenarios) {
        names.emplace_back(scenario.name);
    }
    for (const Simulator::NamedFault& fault : Simulator::Faults) {
        names.emplace_back(fault.name);
    }
    return names;
}

void Write(const Folder& file, const std::string& text)
{
    std::ofstream stream(file);
    stream << text;
    stream.close();
    if (!stream) {
        throw std::runtime_error("cannot write " + file.string());
    }
}

void WritePage(const Folder& folder, const Manual::ManPage& page)
{
    Write(folder / (page.name + ".1.scd"), page.text);
}

/// Each shell finds its script by a name and in a folder of its own.
void WriteCompletions(const Folder& folder, const CLI::App& program, const Manual::Placeholders& placeholders)
{
    const std::string& name = program.get_name();
    for (const char* shell : {"bash", "zsh", "fish"}) {
        std::filesystem::create_directory(folder / shell);
    }
    Write(folder / "bash" / name, Manual::BashCompletion(program, placeholders));
    Write(folder / "zsh" / ("_" + name), Manual::ZshCompletion(program, placeholders));
    Write(folder / "fish" / (name + ".fish"), Manual::FishCompletion(program, placeholders));
}

void WriteAll(const Folder& pages, const Folder& completions)
{
    const Cli::Program program;
    const CLI::App& vesmar = program.CommandLine();
    const std::shared_ptr<const CLI::App> simulator = Simulator::DeclaredCommandLine();
    for (const Manual::ManPage& page : Manual::PagePerCommand(vesmar, simulator->get_name())) {
        WritePage(pages, page);
    }
    WritePage(pages, Manual::WholePage(*simulator, vesmar.get_name()));
    const std::shared_ptr<const CLI::App> panel = Panel::declaredCommandLine();
    WritePage(pages, Manual::WholePage(*panel, vesmar.get_name()));
    WriteCompletions(
        completions, vesmar,
        {FilePlaceholders, {{"CODE", ErrorNumbers()}, {"NAME", ErrorNames()}, {"DATETIME", {"now"}}}});
    WriteCompletions(completions, *simulator, {FilePlaceholders, {{"NAME", ScenarioAndFaultNames()}}});
    WriteCompletions(completions, *panel, {FilePlaceholders, {}});
}

} // namespace

int main(int argc, char** argv)
{
    constexpr int ArgumentCount = 3;
    if (argc != ArgumentCount) {
        std::cerr << "Usage: " << argv[0] << " FOLDER-OF-PAGES FOLDER-OF-COMPLETIONS\n";
        return EXIT_FAILURE;
    }
    try {
        WriteAll(argv[1], argv[2]);
    } catch (const std::exception& problem) {
        std::cerr << "The manual cannot be written: " << problem.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
