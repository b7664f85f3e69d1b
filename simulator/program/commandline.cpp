#include "simulator/program/commandline.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <memory>

#include <CLI/CLI.hpp>

#include <QFile>
#include <QRegularExpression>

#include "simulator/control/scenarios.h"
#include "simulator/text/quoted.h"

namespace Simulator
{

namespace
{

constexpr double LongestMilliseconds = 600000;
constexpr double LongestSeconds = 86400;
constexpr int LowestBaud = 50;
constexpr int HighestBaud = 4000000;

constexpr char RunUsage[] = "Usage: vesmar-simulator run [OPTIONS] -- PROGRAM [ARG...]\n";
constexpr char Usage[] = "Usage: vesmar-simulator [OPTIONS] --link PATH\n"
                         "       vesmar-simulator run [OPTIONS] -- PROGRAM [ARG...]\n"
                         "       vesmar-simulator confirmation IMAGE > FILE\n";

/// The options as CLI11 fills them in.
struct RawOptions {
    std::string linkPath;
    std::string logPath;
    std::string scenario;
    std::string faultsPath;
    std::string playbackPath;
    std::string firmwarePath;
    std::string confirmation;
    std::string newVersion = "1.06";
    std::string imagePath;
    std::vector<std::string> schedule;
    unsigned int seed = 1;
    int baud = 0;
    double restartTime = 500;
    double answerAfter = 0;
    double startDelay = 50;
    double runOn = 2000;
    double installTime = 1500;
};

class HelpFormatter : public CLI::Formatter
{
public:
    std::string make_usage(const CLI::App* /*app*/, std::string /*name*/) const override { return Usage; }
};

/// The help of a command whose options are those of the program.
class RunHelpFormatter : public CLI::Formatter
{
public:
    explicit RunHelpFormatter(const CLI::App& program) : _program(program) {}

    std::string make_usage(const CLI::App* /*app*/, std::string /*name*/) const override { return RunUsage; }

    std::string make_group(std::string group, bool isPositional,
                           std::vector<const CLI::Option*> /*own*/) const override
    {
        const auto isForRun = [](const CLI::Option* option) {
            return option->get_name() != "--link" && option->get_name() != "--version";
        };
        return CLI::Formatter::make_group(std::move(group), isPositional, _program.get_options(isForRun));
    }

private:
    const CLI::App& _program;
};

/// A check whose type stays out of the help.
CLI::Validator InRange(double least, double most)
{
    return CLI::Range(least, most).description("");
}

template <typename Table>
std::string Described(const Table& table)
{
    std::string text;
    for (const auto& entry : table) {
        text += "  " + Synopsis(entry).toStdString() + ": " + entry.meaning + "\n";
    }
    return text;
}

std::string Footer()
{
    return "\nScenarios:\n" + Described(Scenarios) + "\nFaults:\n" + Described(Faults) +
           "\nCommands (of --at, and with --link of standard input, one a line):\n"
           "  mode N, error N, function N: what the instrument reports from now on\n"
           "  restart N: restarts into mode N\n"
           "  scenario NAME [N]: one of the scenarios, or of the faults\n"
           "  fault NAME, unplug, plug: one of the faults; plug ends it\n"
           "  With --playback, only faults have something to act on.\n"
           "On standard input only:\n"
           "  inject FAULT: one more fault, as one in the file of --faults, on one line\n"
           "  faults clear: ends the faults of --faults and inject\n"
           "  quit: ends the simulator\n";
}

/// Without this, a name that a script left empty would count as no option at all.
std::string ObjectionToName(const std::string& name)
{
    return name.empty() ? "the name is empty; name a file" : "";
}

void AddTime(CLI::App* app, const char* name, double* milliseconds, const char* meaning)
{
    app->add_option(name, *milliseconds, meaning)->type_name("MS")->check(InRange(0, LongestMilliseconds));
}

void AddCourse(CLI::App* app, RawOptions* raw)
{
    app->add_option("--link", raw->linkPath, "Make the instrument's line reachable at this path")
        ->type_name("PATH");
    app->add_option("--scenario", raw->scenario, "Start with this scenario or fault")->type_name("NAME");
    app->add_option("--at", raw->schedule, "Carry out a command so long after the start; may be repeated")
        ->type_name("SECONDS:COMMAND")
        ->allow_extra_args(false);
    app->add_option("--faults", raw->faultsPath, "Start with the faults of this file, see docs/faults.md")
        ->type_name("FILE")
        ->check(ObjectionToName);
    app->add_option("--playback", raw->playbackPath,
                    "Answer as the recording in this file says, see docs/simulator.md")
        ->type_name("FILE")
        ->check(ObjectionToName);
    app->add_option("--log", raw->logPath, "Write a line per exchange and per change to this file")
        ->type_name("FILE");
}

void AddBehaviour(CLI::App* app, RawOptions* raw)
{
    app->add_option("--seed", raw->seed, "Start of the readings' random numbers (default 1)")->type_name("N");
    AddTime(app, "--restart-time", &raw->restartTime, "How long a restart takes (default 500)");
    AddTime(app, "--start-delay", &raw->startDelay,
            "How long a measurement that was started still reports prepared (default 50)");
    AddTime(app, "--run-on", &raw->runOn,
            "How long a measurement runs on in the scenario runs-on-after-stop (default 2000)");
    AddTime(app, "--install-time", &raw->installTime,
            "How long confirmed firmware takes until the restart (default 1500)");
    app->add_option("--new-version", raw->newVersion,
                    "What the instrument reports after a firmware update (default 1.06)")
        ->type_name("VERSION");
    app->add_option("--confirmation", raw->confirmation,
                    "The two bytes that confirm any firmware (default: those that \"confirmation\" prints)")
        ->type_name("HEX");
    app->add_option("--save-firmware", raw->firmwarePath,
                    "Write the firmware of a confirmed update to this file")
        ->type_name("FILE");
    app->add_option("--baud", raw->baud,
                    "Let bytes take the time of a line of so many bits per second (default: no time)")
        ->type_name("N")
        ->check(InRange(LowestBaud, HighestBaud));
    AddTime(app, "--answer-after", &raw->answerAfter, "Wait so long before each answer (default 0)");
}

ControlCommand RequiredCommand(const QString& text, const char* option)
{
    QString error;
    const std::optional<ControlCommand> command = ParseControlCommand(text, &error);
    if (!command) {
        throw CLI::ValidationError(option, error.toStdString());
    }
    return *command;
}

TimedCommand ParseTimedCommand(const std::string& text)
{
    const QString whole = QString::fromLocal8Bit(text.c_str());
    bool isNumber = false;
    const double seconds = whole.section(QLatin1Char(':'), 0, 0).toDouble(&isNumber);
    if (!isNumber || !(seconds >= 0 && seconds <= LongestSeconds)) {
        throw CLI::ValidationError("--at", "\"" + text + "\" does not begin with seconds and a colon");
    }
    return {std::chrono::milliseconds(std::llround(seconds * 1000)),
            RequiredCommand(whole.section(QLatin1Char(':'), 1), "--at")};
}

/// Returns two bytes from four hexadecimal digits, or no byte from an empty text.
QByteArray ParseConfirmation(const std::string& text)
{
    static const QRegularExpression form(QStringLiteral("\\A(?:[0-9A-Fa-f]{4})?\\z"));
    if (!form.match(QString::fromStdString(text)).hasMatch()) {
        throw CLI::ValidationError("--confirmation", "\"" + text + "\" is not four hexadecimal digits");
    }
    return QByteArray::fromHex(QByteArray::fromStdString(text));
}

/// Returns a version such as "1.06" as the instrument sends it: "106".
QByteArray ParseVersion(const std::string& text)
{
    static const QRegularExpression form(QStringLiteral("\\A([0-9])\\.([0-9]{2})\\z"));
    const QRegularExpressionMatch match = form.match(QString::fromStdString(text));
    if (!match.hasMatch()) {
        throw CLI::ValidationError("--new-version", "\"" + text + "\" is not a version such as 1.06");
    }
    return (match.captured(1) + match.captured(2)).toLatin1();
}

QString PathOf(const std::string& option)
{
    return QFile::decodeName(option.c_str());
}

std::chrono::milliseconds Milliseconds(double time)
{
    return std::chrono::milliseconds(std::llround(time));
}

InstrumentOptions InstrumentOptionsOf(const RawOptions& raw)
{
    InstrumentOptions instrument;
    instrument.keepsExchanges = false;
    instrument.logPath = PathOf(raw.logPath);
    instrument.answerAfter = std::chrono::microseconds(std::llround(raw.answerAfter * 1000));
    instrument.baud = raw.baud;
    instrument.model.seed = raw.seed;
    instrument.model.restartTime = Milliseconds(raw.restartTime);
    instrument.model.functionTimings.startDelay = Milliseconds(raw.startDelay);
    instrument.model.functionTimings.runOn = Milliseconds(raw.runOn);
    instrument.model.update.installTime = Milliseconds(raw.installTime);
    instrument.model.update.newVersion = ParseVersion(raw.newVersion);
    instrument.model.update.confirmation = ParseConfirmation(raw.confirmation);
    instrument.firmwarePath = PathOf(raw.firmwarePath);
    return instrument;
}

CommandLine Digested(const RawOptions& raw)
{
    CommandLine commandLine;
    commandLine.instrument = InstrumentOptionsOf(raw);
    commandLine.imagePath = PathOf(raw.imagePath);
    commandLine.faultsPath = PathOf(raw.faultsPath);
    commandLine.playbackPath = PathOf(raw.playbackPath);
    commandLine.linkPath = PathOf(raw.linkPath);
    if (!raw.scenario.empty()) {
        const QString command = QStringLiteral("scenario ") + QString::fromLocal8Bit(raw.scenario.c_str());
        const ControlCommand scenario = RequiredCommand(command, "--scenario");
        if (scenario.verb == ControlCommand::Verb::Scenario && !raw.playbackPath.empty()) {
            throw CLI::ValidationError("--scenario",
                                       "with --playback it takes a fault only; leave one of them out");
        }
        commandLine.schedule.push_back({std::chrono::milliseconds(0), scenario});
    }
    for (const std::string& text : raw.schedule) {
        commandLine.schedule.push_back(ParseTimedCommand(text));
    }
    return commandLine;
}

void CheckWhatToDo(bool isRun, const CommandLine& commandLine)
{
    const bool isServing = isRun || !commandLine.linkPath.isEmpty() || !commandLine.program.empty();
    if (!commandLine.imagePath.isEmpty()) {
        if (isServing) {
            throw CLI::ExcludesError("confirmation", "--link and run");
        }
        return;
    }
    if (isRun && commandLine.program.empty()) {
        throw CLI::RequiredError("\"--\" and a program to run");
    }
    if (isRun && !commandLine.linkPath.isEmpty()) {
        throw CLI::ExcludesError("run", "--link");
    }
    if (!isRun && commandLine.linkPath.isEmpty()) {
        throw CLI::RequiredError("--link PATH or run");
    }
    if (!isRun && !commandLine.program.empty()) {
        throw CLI::ExtrasError({commandLine.program.front()});
    }
}

/// The declared command line and the options that it fills in.
struct Declaration {
    Declaration();

    RawOptions raw;
    CLI::App app{"A simulated instrument at a pseudo-terminal.", "vesmar-simulator"};
    CLI::App* run = nullptr;
};

Declaration::Declaration()
{
    app.formatter(std::make_shared<HelpFormatter>());
    app.set_version_flag("--version", "vesmar-simulator " VESMAR_VERSION);
    app.footer(Footer());
    AddCourse(&app, &raw);
    AddBehaviour(&app, &raw);
    run = app.add_subcommand("run", "Run a program that finds the instrument at its serial device")
              ->fallthrough();
    run->formatter(std::make_shared<RunHelpFormatter>(app));
    CLI::App* confirmation =
        app.add_subcommand("confirmation", "Print the two bytes that confirm a firmware image");
    confirmation->footer("");
    confirmation->add_option("IMAGE", raw.imagePath, "The firmware, in sectors of 512 bytes")
        ->required()
        ->type_name("");
}

} // namespace

std::optional<CommandLine> ParseCommandLine(int argumentCount, char** arguments, int* exitStatus)
{
    Declaration declaration;
    CLI::App& app = declaration.app;

    // Everything behind "--" belongs to the program and is not parsed here.
    char** const end = arguments + argumentCount;
    char** const divider =
        std::find_if(arguments, end, [](const char* argument) { return std::string("--") == argument; });
    try {
        app.parse(static_cast<int>(divider - arguments), arguments);
        CommandLine commandLine = Digested(declaration.raw);
        if (divider != end) {
            commandLine.program.assign(divider + 1, end);
        }
        CheckWhatToDo(declaration.run->parsed(), commandLine);
        return commandLine;
    } catch (const CLI::Success& success) {
        *exitStatus = app.exit(success);
    } catch (const CLI::ParseError& error) {
        const bool isDividerMissing =
            declaration.run->parsed() && divider == end && !app.remaining(true).empty();
        std::cerr << "vesmar-simulator: "
                  << OneLine(QString::fromLocal8Bit(error.what())).toLocal8Bit().constData()
                  << (isDividerMissing ? "; put \"--\" in front of the program to run\n" : "\n") << Usage;
        *exitStatus = 1;
    }
    return std::nullopt;
}

std::shared_ptr<const CLI::App> DeclaredCommandLine()
{
    const auto declaration = std::make_shared<Declaration>();
    return {declaration, &declaration->app};
}

} // namespace Simulator
