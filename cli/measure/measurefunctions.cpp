#include "cli/measure/measurefunctions.h"

#include <CLI/CLI.hpp>

#include <QFile>
#include <QStringList>

#include <algorithm>

#include "cli/kit/units.h"
#include "cli/kit/verb.h"
#include "cli/measure/measurementformat.h"
#include "cli/words/text.h"

namespace Cli
{

namespace
{

using VesmarClient::FunctionInfo;
using VesmarClient::FunctionKind;
using VesmarClient::Functions;
using VesmarClient::Option;
using VesmarClient::OptionKind;
using VesmarClient::Settings;

/// Without the places where a window may break it.
QString TitleOf(const FunctionInfo& function)
{
    return QString(function.title).remove(QChar::SoftHyphen);
}

QString DescriptionOf(const FunctionInfo& function)
{
    if (function.isDangerous) {
        return Text::tr("%1; a dangerous voltage is present while it runs").arg(TitleOf(function));
    }
    return function.kind == FunctionKind::Single ? Text::tr("%1, a single measurement").arg(TitleOf(function))
                                                 : TitleOf(function);
}

QString DescriptionOf(const Option& option)
{
    QString text = option.description;
    if (!option.mayStayUnset) {
        text = Text::tr("%1; required").arg(text);
    }
    if (option.defaultValue.isValid()) {
        text = Text::tr("%1 (default %2)").arg(text, option.defaultValue.toString());
    }
    return option.special.isEmpty() ? text
                                    : Text::tr("%1, or \"%2\": until Ctrl-C").arg(text, option.special);
}

bool IsTime(const Option& option)
{
    return option.unit == QLatin1String("s");
}

std::string TypeNameOf(const Option& option)
{
    QStringList words;
    for (const VesmarClient::Choice& choice : option.choices) {
        words.append(choice.identifier);
    }
    if (option.kind != OptionKind::Choice) {
        words.append(IsTime(option) ? Text::tr("TIME") : Text::tr("NUMBER"));
    }
    if (!option.special.isEmpty()) {
        words.append(option.special);
    }
    return words.join(QLatin1Char('|')).toStdString();
}

void AddOption(CLI::App& command, const Option& option, Settings& settings)
{
    const std::string name = "--" + option.identifier.toStdString();
    if (option.kind == OptionKind::Flag) {
        const auto accept = [&settings, option] { settings.set(option.identifier, true); };
        command.add_flag_callback(name, accept, option.description.toStdString());
        return;
    }
    const auto accept = [&settings, option](const std::string& text) {
        settings.set(option.identifier, QString::fromLocal8Bit(text.c_str()));
    };
    auto* const added =
        command.add_option_function<std::string>(name, accept, DescriptionOf(option).toStdString());
    added->type_name(TypeNameOf(option));
    if (IsTime(option)) {
        added->transform(InSeconds());
    }
}

/// Throws the error for the first option that cannot be measured.
void Check(const Settings& settings)
{
    const auto problems = settings.validate();
    if (problems.isEmpty()) {
        return;
    }
    const VesmarClient::SettingsProblem& problem = problems.first();
    const QVariant given = settings.options().value(problem.option);
    const QString complaint =
        given.userType() == QMetaType::QString
            ? Text::tr("\"%1\" is not allowed. %2").arg(given.toString(), problem.message)
            : problem.message;
    throw CLI::ValidationError("--" + problem.option.toStdString(), complaint.toStdString());
}

} // namespace

MeasureFunctions::MeasureFunctions(CLI::App& measure)
{
    const auto all = Functions::all();
    _functions.reserve(static_cast<size_t>(all.size())); // the options refer to its elements
    for (const FunctionInfo& info : all) {
        Add(measure, info);
    }
}

void MeasureFunctions::Add(CLI::App& measure, const FunctionInfo& info)
{
    const std::string name = info.identifier.toStdString();
    CLI::App* command = measure.add_subcommand(name, DescriptionOf(info).toStdString())->fallthrough();
    ShowUsage(*command,
              Text::tr("Usage: vesmar measure %1 [OPTIONS]").arg(info.identifier).toStdString() + '\n');
    command->footer(
        '\n' + Text::tr("vesmar measure --help tells of the options that all functions have.").toStdString() +
        '\n');
    _functions.push_back({info, command, Settings(info.identifier)});
    Settings& settings = _functions.back().settings;
    AddCsv(_functions.back());
    for (const Option& option : info.options) {
        AddOption(*command, option, settings);
    }
    command->final_callback([&settings] { Check(settings); });
}

void MeasureFunctions::AddCsv(const MeasureFunction& function)
{
    const bool isContinuous = IsContinuous(function.info);
    const auto accept = [this, isContinuous, &function](const std::string& file) {
        if (!isContinuous) {
            const QString complaint = Text::tr("%1 gives a single result; only continuous functions have "
                                               "readings to write to a file")
                                          .arg(function.info.identifier);
            throw CLI::ValidationError("--csv", complaint.toStdString());
        }
        _csvFile = QFile::decodeName(file.c_str());
    };
    const std::string description = Text::tr("Write every reading to this file as it comes; - for the "
                                             "standard output, and then for nothing else")
                                        .toStdString();
    function.command->add_option_function<std::string>("--csv", accept, description)
        ->type_name("FILE")
        ->group(isContinuous ? "Options" : "");
}

const MeasureFunction* MeasureFunctions::Chosen() const
{
    const auto chosen = std::find_if(_functions.cbegin(), _functions.cend(),
                                     [](const MeasureFunction& each) { return each.command->parsed(); });
    return chosen != _functions.cend() ? &*chosen : nullptr;
}

std::string MeasureFunctions::Names() const
{
    std::string names;
    for (const MeasureFunction& function : _functions) {
        names += (names.empty() ? "" : ", ") + function.info.identifier.toStdString();
    }
    return names;
}

} // namespace Cli
