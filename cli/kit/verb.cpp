#include "cli/kit/verb.h"

#include <CLI/CLI.hpp>

#include <QString>

#include <array>
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

/// The words of the help that stand for what is given there, and those that are not this program's own.
constexpr std::array<const char*, 12> Words{
    QT_TRANSLATE_NOOP("Cli::Text", "CODE|NAME"),   QT_TRANSLATE_NOOP("Cli::Text", "DATE"),
    QT_TRANSLATE_NOOP("Cli::Text", "DATETIME"),    QT_TRANSLATE_NOOP("Cli::Text", "FILE"),
    QT_TRANSLATE_NOOP("Cli::Text", "IMAGE"),       QT_TRANSLATE_NOOP("Cli::Text", "LOG"),
    QT_TRANSLATE_NOOP("Cli::Text", "OUT"),         QT_TRANSLATE_NOOP("Cli::Text", "Options"),
    QT_TRANSLATE_NOOP("Cli::Text", "REQUIRED"),    QT_TRANSLATE_NOOP("Cli::Text", "Positionals"),
    QT_TRANSLATE_NOOP("Cli::Text", "Subcommands"), QT_TRANSLATE_NOOP("Cli::Text", "error")};

class HelpFormatter : public CLI::Formatter
{
public:
    explicit HelpFormatter(std::string usage) : _usage(std::move(usage))
    {
        for (const char* const word : Words) {
            label(word, Text::tr(word).toStdString());
        }
    }

    std::string make_group(std::string group, bool isPositional,
                           std::vector<const CLI::Option*> options) const override
    {
        return Formatter::make_group(get_label(group), isPositional, std::move(options));
    }

    std::string make_subcommands(const CLI::App* app, CLI::AppFormatMode mode) const override
    {
        const std::string title = "Subcommands";
        std::string text = Formatter::make_subcommands(app, mode);
        const std::size_t found = text.find(title);
        return found == std::string::npos ? text : text.replace(found, title.size(), get_label(title));
    }

    std::string make_option_name(const CLI::Option* option, bool isPositional) const override
    {
        return get_label(Formatter::make_option_name(option, isPositional));
    }

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
    : _app(*program.add_subcommand(texts.name, Text::tr(texts.description).toStdString())),
      _usage(Text::tr(texts.usage).toStdString())
{
    ShowUsage(_app, _usage);
    _app.footer(Text::tr(texts.footer).toStdString());
    _app.add_flag("--json", _options.isJson, Text::tr("Write JSON, one object on each line").toStdString());
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
    _app.add_flag("--trace", _options.isTraceWanted,
                  Text::tr("Show the library's own trace on the error output").toStdString());
    AddSeconds("--timeout",
               QT_TRANSLATE_NOOP("Cli::Text", "How long the link may take to come up (default 10)"),
               ShortestTimeout, _options.timeout);
}

CLI::App& Verb::AddSetCommand(const char* description)
{
    CLI::App* set = _app.add_subcommand("set", Text::tr(description).toStdString())->fallthrough();
    ShowUsage(*set, _usage);
    const QString help = Text::tr("vesmar %1 --help tells of its options and of everything else.");
    set->footer('\n' + help.arg(QString::fromStdString(_app.get_name())).toStdString() + '\n');
    return *set;
}

void Verb::AddConfirmTimeout(std::chrono::milliseconds& target, double least)
{
    AddSeconds(
        "--confirm-timeout",
        QT_TRANSLATE_NOOP("Cli::Text", "How long the instrument may take to report it as done (default 30)"),
        least, target);
}

void Verb::AddTime(const char* name, const char* description, double least,
                   const std::function<void(std::chrono::milliseconds)>& accept)
{
    _app.add_option_function<std::string>(
            name, [name, least, accept](const std::string& text) { accept(ParseSeconds(name, text, least)); },
            Text::tr(description).toStdString())
        ->transform(InSeconds())
        ->type_name(Text::tr("TIME").toStdString());
}

} // namespace Cli
