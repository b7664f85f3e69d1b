#include "cli/program/program.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <ostream>

#include "cli/verbs/calibrationverb.h"
#include "cli/verbs/clockverb.h"
#include "cli/verbs/decodeverb.h"
#include "cli/verbs/doctorverb.h"
#include "cli/verbs/explainverb.h"
#include "cli/verbs/infoverb.h"
#include "cli/verbs/measureverb.h"
#include "cli/verbs/monitorverb.h"
#include "cli/verbs/restartverb.h"
#include "cli/verbs/stopverb.h"
#include "cli/verbs/updateverb.h"
#include "cli/words/exitstatus.h"
#include "cli/words/format.h"

namespace Cli
{

namespace
{

constexpr char Description[] = "Drives a portable appliance tester on the serial line.";
constexpr char Version[] = "vesmar " VESMAR_VERSION;
constexpr char Usage[] = "Usage: vesmar VERB [OPTIONS]\n"
                         "       vesmar VERB --help\n";

std::string Footer()
{
    std::string footer = "\nExit status; VERB --help tells what it means there:\n";
    for (const ExitStatus::Explained& each : ExitStatus::All()) {
        const std::string number = std::to_string(each.status);
        constexpr std::size_t Width = 5;
        footer += "  " + number + std::string(Width - number.size(), ' ') + each.words + '\n';
    }
    return footer + "\nExample, without an instrument:\n  vesmar-simulator run -- vesmar info\n";
}

std::string OneLine(const std::string& text)
{
    return Printable(QString::fromStdString(text)).toStdString();
}

} // namespace

Program::Program() : _app(std::make_unique<CLI::App>(Description, "vesmar"))
{
    constexpr int MostVerbs = 1;
    _app->require_subcommand(0, MostVerbs);
    _app->set_version_flag("--version", Version);
    ShowUsage(*_app, Usage);
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
            return verb;
        }
        throw CLI::ValidationError("no verb given; vesmar --help lists them");
    } catch (const CLI::Success& success) {
        *exitStatus = _app->exit(success, output, errors);
    } catch (const CLI::ParseError& error) {
        const Verb* verb = ChosenVerb();
        errors << "vesmar: " << OneLine(Complaint(error.what())) << '\n'
               << (verb != nullptr ? verb->Usage() : Usage);
        *exitStatus = ExitStatus::BadUsage;
    }
    return nullptr;
}

/// A word that stands where a verb belongs is meant as one.
std::string Program::Complaint(const std::string& usual) const
{
    const std::vector<std::string> unknown = _app->remaining();
    const bool isMeantAsVerb =
        ChosenVerb() == nullptr && !unknown.empty() && unknown.front().rfind('-', 0) != 0;
    return isMeantAsVerb ? "there is no verb " + unknown.front() + "; vesmar --help lists them" : usual;
}

Verb* Program::ChosenVerb() const
{
    const auto chosen =
        std::find_if(_verbs.cbegin(), _verbs.cend(), [](const auto& verb) { return verb->IsChosen(); });
    return chosen != _verbs.cend() ? chosen->get() : nullptr;
}

} // namespace Cli
