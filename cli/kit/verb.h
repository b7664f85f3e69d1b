#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "cli/kit/linkoptions.h"

namespace CLI
{
class App;
}

namespace Cli
{

/// The least number of seconds that a time limit may have.
constexpr double ShortestTimeout = 0.1;

/// How long an instrument may take to do something and to report it.
constexpr std::chrono::milliseconds UsualConfirmTimeout{30000};

/// Shows the usage at the head of the command's help.
void ShowUsage(CLI::App& command, const std::string& usage);

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

    bool IsChosen() const;
    std::string Usage() const { return _usage; }
    const LinkOptions& Options() const { return _options; }
    /// The verb writes JSON, because the program is to do so.
    void WriteJson() { _options.isJson = true; }

    /// Does it, while there is a Qt application. Returns the program's exit status.
    virtual int Run() = 0;

protected:
    /// A verb that does not talk to the instrument has no options for it.
    enum class Reach { Instrument, ProgramOnly };

    Verb(CLI::App& program, const VerbTexts& texts, Reach reach = Reach::Instrument);

    CLI::App& Command() const { return _app; }

    /// Adds an option for a time in a range of seconds, and keeps it in `target`, a time or an optional
    /// one.
    template <typename Target>
    void AddSeconds(const char* name, const char* description, double least, Target& target)
    {
        AddTime(name, description, least, [&target](std::chrono::milliseconds time) { target = time; });
    }

    /// Adds the command "set" below this one.
    CLI::App& AddSetCommand(const char* description);

    /// Adds the option for how long the instrument may take to do something and to report it.
    void AddConfirmTimeout(std::chrono::milliseconds& target, double least = ShortestTimeout);

private:
    void AddInstrumentOptions();
    void AddTime(const char* name, const char* description, double least,
                 const std::function<void(std::chrono::milliseconds)>& accept);

    CLI::App& _app;
    std::string _usage;
    LinkOptions _options;
};

} // namespace Cli
