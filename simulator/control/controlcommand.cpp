#include "simulator/control/controlcommand.h"

#include <array>

#include <QStringList>

#include "simulator/text/quoted.h"
#include "simulator/wire/statusword.h"

namespace Simulator
{

namespace
{

struct NumberCommand {
    const char* name;
    ControlCommand::Verb verb;
    int highest;
};

constexpr std::array<NumberCommand, 4> NumberCommands{{
    {"mode", ControlCommand::Verb::Mode, Mode::Highest},
    {"restart", ControlCommand::Verb::Restart, Mode::Highest},
    {"error", ControlCommand::Verb::Error, StatusWord::HighestError},
    {"function", ControlCommand::Verb::Function, StatusWord::HighestFunction},
}};

constexpr int LongestDelay = 600000;

std::optional<int> ParseNumber(const QString& text, int lowest, int highest)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < lowest || number > highest) {
        return std::nullopt;
    }
    return number;
}

ControlCommand FaultCommand(Fault fault)
{
    ControlCommand command;
    command.fault = fault;
    return command;
}

ControlCommand ScenarioCommand(Scenario scenario, int number)
{
    ControlCommand command;
    command.verb = ControlCommand::Verb::Scenario;
    command.scenario = scenario;
    command.number = number;
    return command;
}

template <typename Table>
QString NamesOf(const Table& table)
{
    QStringList names;
    for (const auto& entry : table) {
        names.append(Synopsis(entry));
    }
    return names.join(QLatin1String(", "));
}

std::optional<ControlCommand> ParseNumberCommand(const NumberCommand& form, const QStringList& words,
                                                 QString* error)
{
    const std::optional<int> number =
        words.size() == 2 ? ParseNumber(words.at(1), 0, form.highest) : std::optional<int>();
    if (!number) {
        *error =
            QStringLiteral("%1 takes a number from 0 to %2").arg(QLatin1String(form.name)).arg(form.highest);
        return std::nullopt;
    }
    ControlCommand command;
    command.verb = form.verb;
    command.number = *number;
    return command;
}

std::optional<ControlCommand> ParseFault(const QStringList& words, QString* error)
{
    const std::optional<Fault> fault = FindFault(words.value(1));
    if (!fault) {
        *error = QStringLiteral("fault takes one of %1").arg(NamesOf(Faults));
        return std::nullopt;
    }
    ControlCommand command = FaultCommand(*fault);
    if (words.size() == 2) {
        return command;
    }
    const std::optional<int> delay = ParseNumber(words.at(2), 0, LongestDelay);
    if (words.size() > 3 || *fault != Fault::Slow || !delay) {
        *error =
            QStringLiteral("only \"fault slow\" takes a number, of milliseconds up to %1").arg(LongestDelay);
        return std::nullopt;
    }
    command.delay = std::chrono::milliseconds(*delay);
    return command;
}

std::optional<ControlCommand> ParseNumberScenario(const NamedScenario& scenario, const QStringList& words,
                                                  QString* error)
{
    const ScenarioNumber& form = *scenario.number;
    const std::optional<int> number =
        words.size() == 3 ? ParseNumber(words.at(2), form.lowest, form.highest) : std::optional<int>();
    if (!number) {
        *error = QStringLiteral("scenario %1 takes %2, from %3 to %4")
                     .arg(QLatin1String(scenario.name), QLatin1String(form.what))
                     .arg(form.lowest)
                     .arg(form.highest);
        return std::nullopt;
    }
    return ScenarioCommand(scenario.scenario, *number);
}

std::optional<ControlCommand> ParseScenario(const QStringList& words, QString* error)
{
    const std::optional<NamedScenario> scenario = FindScenario(words.value(1));
    if (scenario && scenario->number) {
        return ParseNumberScenario(*scenario, words, error);
    }
    if (scenario && words.size() == 2) {
        return ScenarioCommand(scenario->scenario, 0);
    }
    if (FindFault(words.value(1))) {
        return ParseFault(words, error);
    }
    *error =
        QStringLiteral("scenario takes one of %1; or a fault: %2").arg(NamesOf(Scenarios), NamesOf(Faults));
    return std::nullopt;
}

} // namespace

std::optional<ControlCommand> ParseControlCommand(const QString& text, QString* error)
{
    const QStringList words = text.simplified().split(QLatin1Char(' '));
    for (const NumberCommand& form : NumberCommands) {
        if (words.first() == QLatin1String(form.name)) {
            return ParseNumberCommand(form, words, error);
        }
    }
    if (words.first() == QLatin1String("fault")) {
        return ParseFault(words, error);
    }
    if (words.first() == QLatin1String("scenario")) {
        return ParseScenario(words, error);
    }
    if (words == QStringList{QStringLiteral("unplug")}) {
        return FaultCommand(Fault::Silent);
    }
    if (words == QStringList{QStringLiteral("plug")}) {
        return FaultCommand(Fault::None);
    }
    *error = QStringLiteral("no command %1; there are mode N, restart N, error N, function N, scenario NAME, "
                            "fault NAME, unplug, plug")
                 .arg(Quoted(text.simplified()));
    return std::nullopt;
}

} // namespace Simulator
