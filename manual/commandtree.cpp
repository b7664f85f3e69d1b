#include "manual/commandtree.h"

#include <CLI/CLI.hpp>

#include <sstream>

namespace Manual
{

std::vector<const CLI::App*> Commands(const CLI::App& app)
{
    return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

std::vector<const CLI::Option*> Options(const CLI::App& app)
{
    return app.get_options([](const CLI::Option* option) { return !option->get_group().empty(); });
}

std::vector<std::string> UsageLines(const CLI::App& app)
{
    const auto formatter = std::dynamic_pointer_cast<CLI::Formatter>(app.get_formatter());
    if (formatter == nullptr) {
        return {};
    }
    std::vector<std::string> lines;
    for (std::string line : Split(formatter->make_usage(&app, app.get_name()), '\n')) {
        const std::string label = "Usage: ";
        if (line.compare(0, label.size(), label) == 0) {
            line.erase(0, label.size());
        }
        CLI::detail::trim(line);
        if (!line.empty()) {
            lines.push_back(line);
        }
    }
    return lines;
}

std::vector<std::string> FlagsOf(const CLI::Option& option)
{
    std::vector<std::string> flags;
    for (const std::string& name : option.get_snames()) {
        flags.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        flags.push_back("--" + name);
    }
    return flags;
}

std::string ValueOf(const CLI::Option& option)
{
    if (option.get_items_expected_max() == 0) {
        return {};
    }
    const std::string type = option.get_type_name();
    return type.empty() ? option.get_name() : type;
}

std::vector<std::string> Split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) {
        parts.push_back(part);
    }
    return parts;
}

} // namespace Manual
