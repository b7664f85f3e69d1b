#include "cli/kit/verb.h"

#include <CLI/CLI.hpp>

#include <QString>

#include <cmath>
#include <memory>
#include <utility>

#include "cli/kit/units.h"
#include "cli/words/text.h"

namespace Cli
{

namespace
{

constexpr double LongestSeconds = 86400;

class HelpFormatter : public CLI::Formatter
{
public:
    explicit HelpFormatter(std::string usage) : _usage(std::move(usage)) {}

    std::string make_usage(const CLI::App* /*app*/, std::string /*name*/) const override { return _usage; }

private:
    std::string _usage;
};

std::chrono::milliseconds ParseSeconds(const char* name, const std::string& text, double least)
{
    const QString given = QString::fromLocal8Bit(text.c_str());
    bool isNumber = false;
    const double seconds = given.toDouble(&isNumber);
    if (!isNumber || !(seconds >= least && seconds <= LongestSeconds)) {
        const QString complaint =
            Text::tr("\"%1\" is not a time from %2 to %3 seconds, such as 90, 1.5min or 500ms")
                .arg(given, QString::number(least), QString::number(LongestSeconds));
        throw CLI::ValidationError(name, complaint.toStdString());
    }
    return std::chrono::milliseconds(std::llround(seconds * 1000));
}

} // namespace

void ShowUsage(CLI::App& command, const std::string& usage)
{
    command.formatter(std::make_shared<HelpFormatter>(usage));
}

Verb::Verb(CLI::App& program, const VerbTexts& texts, Reach reach)
    : _app(*program.add_subcommand(texts.name, texts.description)), _usage(texts.usage)
{
    ShowUsage(_app, _usage);
    _app.footer(texts.footer);
    _app.add_flag("--json", _options.isJson, "Write JSON, one object on each line");
    if (reach == Reach::Instrument) {
        AddInstrumentOptions();
    }
}

bool Verb::IsChosen() const
{
    return _app.parsed();
}

void Verb::AddInstrumentOptions()
{
    _app.add_flag("--trace", _options.isTraceWanted, "Show the library's own trace on the error output");
    AddSeconds("--timeout", "How long the link may take to come up (default 10)", ShortestTimeout,
               _options.timeout);
}

CLI::App& Verb::AddSetCommand(const char* description)
{
    CLI::App* set = _app.add_subcommand("set", description)->fallthrough();
    ShowUsage(*set, _usage);
    set->footer("\nvesmar " + _app.get_name() + " --help tells of its options and of everything else.\n");
    return *set;
}

void Verb::AddConfirmTimeout(std::chrono::milliseconds& target, double least)
{
    AddSeconds("--confirm-timeout", "How long the instrument may take to report it as done (default 30)",
               least, target);
}

void Verb::AddTime(const char* name, const char* description, double least,
                   const std::function<void(std::chrono::milliseconds)>& accept)
{
    _app.add_option_function<std::string>(
            name, [name, least, accept](const std::string& text) { accept(ParseSeconds(name, text, least)); },
            description)
        ->transform(InSeconds())
        ->type_name("TIME");
}

} // namespace Cli
