#include "cli/program/program.h"

#include <CLI/CLI.hpp>

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <ostream>

#include "cli/program/nearest.h"
#include "cli/verbs/calibrationverb.h"
#include "cli/verbs/clockverb.h"
#include "cli/verbs/decodeverb.h"
#include "cli/verbs/doctorverb.h"
#include "cli/verbs/explainverb.h"
#include "cli/verbs/infoverb.h"
#include "cli/verbs/measureverb.h"
#include "cli/verbs/monitorverb.h"
#include "cli/verbs/reportverb.h"
#include "cli/verbs/restartverb.h"
#include "cli/verbs/stopverb.h"
#include "cli/verbs/updateverb.h"
#include "cli/words/exitstatus.h"
#include "cli/words/format.h"
#include "cli/words/text.h"

namespace Cli
{

namespace
{

constexpr char Version[] = "vesmar " VESMAR_VERSION;
/// Complaints of the library that reads the command line.
struct Usual {
    const char* pattern;
    const char* text;
};
constexpr std::array<Usual, 4> UsualComplaints{{
    {"^(.+) is required$", QT_TRANSLATE_NOOP("Cli::Text", "%1 is required")},
    {"^(.+): 1 required (.+) missing$", QT_TRANSLATE_NOOP("Cli::Text", "%1: 1 required %2 missing")},
    {"^(.+): At Most 1 required but received .+$",
     QT_TRANSLATE_NOOP("Cli::Text", "%1 is given more than once")},
    {"^The following argument was not expected: (.+)$",
     QT_TRANSLATE_NOOP("Cli::Text", "The following argument was not expected: %1")},
}};

QString Translated(const QString& complaint)
{
    for (const Usual& usual : UsualComplaints) {
        const QRegularExpressionMatch match =
            QRegularExpression(QLatin1String(usual.pattern)).match(complaint);
        if (match.hasMatch()) {
            const QString text = Text::tr(usual.text).arg(Text::tr(match.captured(1).toUtf8().constData()));
            return match.lastCapturedIndex() > 1 ? text.arg(Text::tr(match.captured(2).toUtf8().constData()))
                                                 : text;
        }
    }
    return complaint;
}

std::string Usage()
{
    return Text::tr("Usage: vesmar VERB [OPTIONS]\n"
                    "       vesmar VERB --help\n")
        .toStdString();
}

std::string Footer()
{
    std::string footer =
        '\n' + Text::tr("Exit status; VERB --help tells what it means there:").toStdString() + '\n';
    for (const ExitStatus::Explained& each : ExitStatus::All()) {
        const std::string number = std::to_string(each.status);
        constexpr std::size_t Width = 5;
        footer += "  " + number + std::string(Width - number.size(), ' ') + each.words + '\n';
    }
    return footer + '\n' + Text::tr("Example, without an instrument:").toStdString() +
           "\n  vesmar-simulator run -- vesmar info\n";
}

std::string OneLine(const std::string& text)
{
    return Printable(QString::fromStdString(text)).toStdString();
}

/// The options that can be given at the end of what was understood.
std::vector<std::string> OptionsAt(const CLI::App& app)
{
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    std::vector<std::string> names = chosen.empty() ? std::vector<std::string>() : OptionsAt(*chosen.front());
    if (chosen.empty() || chosen.front()->get_fallthrough()) {
        for (const CLI::Option* option : app.get_options()) {
            names.push_back(option->get_name());
        }
    }
    return names;
}

/// The complaint with the word that was probably meant, or with the help that lists what there is.
std::string ThereIsNo(const QString& complaint, const std::string& nearest, const char* help)
{
    return (nearest.empty()
                ? Text::tr("%1; %2 lists them").arg(complaint, QLatin1String(help))
                : Text::tr("%1; did you mean %2?").arg(complaint, QString::fromStdString(nearest)))
        .toStdString();
}

} // namespace

Program::Program()
    : _app(std::make_unique<CLI::App>(
          Text::tr("Drives a portable appliance tester on the serial line.").toStdString(), "vesmar"))
{
    constexpr int MostVerbs = 1;
    _app->require_subcommand(0, MostVerbs);
    _app->set_help_flag("-h,--help", Text::tr("Print this help message and exit").toStdString());
    _app->set_version_flag("--version", Version,
                           Text::tr("Display program version information and exit").toStdString());
    _app->add_flag("--json", _isJson, Text::tr("The same as behind the verb: write JSON").toStdString());
    ShowUsage(*_app, Usage());
    _app->footer(Footer());
    AddVerb<InfoVerb>();
    AddVerb<MonitorVerb>();
    AddVerb<MeasureVerb>();
    AddVerb<StopVerb>();
    AddVerb<ClockVerb>();
    AddVerb<CalibrationVerb>();
    AddVerb<RestartVerb>();
    AddVerb<UpdateVerb>();
    AddVerb<DoctorVerb>();
    AddVerb<DecodeVerb>();
    AddVerb<ExplainVerb>();
    AddVerb<ReportVerb>();
}

Program::~Program() = default;

template <typename ConcreteVerb>
void Program::AddVerb()
{
    _verbs.push_back(std::make_unique<ConcreteVerb>(*_app));
}

Verb* Program::Parse(int argumentCount, const char* const* arguments, std::ostream& output,
                     std::ostream& errors, int* exitStatus)
{
    try {
        _app->parse(argumentCount, arguments);
        if (Verb* verb = ChosenVerb()) {
            if (_isJson) {
                verb->WriteJson();
            }
            return verb;
        }
        throw CLI::ValidationError(Text::tr("no verb given; vesmar --help lists them").toStdString());
    } catch (const CLI::Success& success) {
        *exitStatus = _app->exit(success, output, errors);
    } catch (const CLI::ParseError& error) {
        const Verb* verb = ChosenVerb();
        errors << "vesmar: " << OneLine(Complaint(error)) << '\n'
               << (verb != nullptr ? verb->Usage() : Usage());
        *exitStatus = ExitStatus::BadUsage;
    }
    return nullptr;
}

/// A word that stands where a verb belongs is meant as one.
std::string Program::Complaint(const CLI::ParseError& error) const
{
    const std::vector<std::string> unknown = _app->remaining(true);
    if (unknown.empty() || dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) {
        return Translated(QString::fromStdString(error.what())).toStdString();
    }
    const std::string& word = unknown.front();
    if (word.rfind('-', 0) == 0) {
        return ThereIsNo(Text::tr("there is no option %1").arg(QString::fromStdString(word)),
                         NearestTo(word, OptionsAt(*_app)), "--help");
    }
    if (ChosenVerb() != nullptr) {
        return Translated(QString::fromStdString(error.what())).toStdString();
    }
    std::vector<std::string> verbs;
    for (const CLI::App* verb : _app->get_subcommands({})) {
        verbs.push_back(verb->get_name());
    }
    return ThereIsNo(Text::tr("there is no verb %1").arg(QString::fromStdString(word)),
                     NearestTo(word, verbs), "vesmar --help");
}

Verb* Program::ChosenVerb() const
{
    const auto chosen =
        std::find_if(_verbs.cbegin(), _verbs.cend(), [](const auto& verb) { return verb->IsChosen(); });
    return chosen != _verbs.cend() ? chosen->get() : nullptr;
}

} // namespace Cli
