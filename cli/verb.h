#pragma once

#include <CLI/CLI.hpp>

#include <chrono>
#include <string>

namespace Cli
{

/// The least number of seconds that a time limit may have.
constexpr double ShortestTimeout = 0.1;

/// How long an instrument may take to do something and to report it.
constexpr std::chrono::milliseconds UsualConfirmTimeout{30000};

/// What every verb takes; all but the first are for those that talk to the instrument.
struct LinkOptions {
    bool isJson = false;
    bool isTraceWanted = false;
    std::chrono::milliseconds timeout{10000};
};

/// How a verb presents itself.
struct VerbTexts {
    const char* name;
    const char* description;
    const char* usage;
    const char* footer;
};

/// One thing that the program can do. It understands its own part of the command line.
class Verb
{
public:
    virtual ~Verb() = default;
    Verb(const Verb&) = delete;
    Verb& operator=(const Verb&) = delete;

    bool IsChosen() const { return _app.parsed(); }
    std::string Usage() const { return _usage; }
    const LinkOptions& Options() const { return _options; }

    /// Does it, with a Qt application there. The program's exit status.
    virtual int Run() = 0;

protected:
    /// A verb that does not talk to the instrument takes no options for it.
    enum class Reach { Instrument, ProgramOnly };

    Verb(CLI::App& program, const VerbTexts& texts, Reach reach = Reach::Instrument);

    CLI::App& Command() const { return _app; }

    /// Adds an option that takes seconds, in a range, and keeps them in `target`, a time or an optional one.
    template <typename Target>
    void AddSeconds(const char* name, const char* description, double least, Target& target)
    {
        _app.add_option_function<std::string>(
                name,
                [name, least, &target](const std::string& text) { target = ParseSeconds(name, text, least); },
                description)
            ->type_name("SECONDS");
    }

    /// Adds the command "set" below this one.
    CLI::App& AddSetCommand(const char* description);

    /// Adds the option for how long the instrument may take to do something and to report it.
    void AddConfirmTimeout(std::chrono::milliseconds& target, double least = ShortestTimeout);

private:
    void AddInstrumentOptions();
    static std::chrono::milliseconds ParseSeconds(const char* name, const std::string& text, double least);

    CLI::App& _app;
    std::string _usage;
    LinkOptions _options;
};

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
