#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <utility>

namespace Cli
{

/// Shows one usage text at the head of the help.
class HelpFormatter : public CLI::Formatter
{
public:
    explicit HelpFormatter(std::string usage) : _usage(std::move(usage)) {}

    std::string make_usage(const CLI::App* /*app*/, std::string /*name*/) const override { return _usage; }

private:
    std::string _usage;
};

} // namespace Cli
