#include "cli/measure/measurefunctions.h"

#include <CLI/CLI.hpp>

#include <QFile>

#include <algorithm>
#include <cmath>
#include <functional>

#include <Vesmar/hvtestsettings.h>
#include <Vesmar/ideltasettings.h>
#include <Vesmar/iecsettings.h>
#include <Vesmar/ipesettings.h>
#include <Vesmar/isubsettings.h>
#include <Vesmar/itsettings.h>
#include <Vesmar/powersettings.h>
#include <Vesmar/rcdiecsettings.h>
#include <Vesmar/rcdsettings.h>
#include <Vesmar/risosettings.h>
#include <Vesmar/rlnsettings.h>
#include <Vesmar/rpesettings.h>

#include "cli/kit/choice.h"
#include "cli/kit/verb.h"
#include "cli/measure/rcdoptions.h"

namespace Cli
{

namespace
{

using Vesmar::ContinuousMeasurementSettings;
using Vesmar::HVTestSettings;
using Vesmar::IDELTASettings;
using Vesmar::IPESettings;
using Vesmar::ITSettings;
using Vesmar::POWERSettings;
using Vesmar::RISOSettings;
using Vesmar::RPESettings;

constexpr int NoTime = -1;
constexpr int LongestTime = 86400;
constexpr double LongestTimeOffset = 600;
constexpr char Unlimited[] = "unlimited";

void AddTime(CLI::App& command, ContinuousMeasurementSettings& settings)
{
    const auto accept = [&settings](const std::string& text) {
        bool isNumber = false;
        const int seconds = QString::fromStdString(text).toInt(&isNumber);
        if (text == Unlimited) {
            settings.SetTime(NoTime);
        } else if (isNumber && seconds >= 1 && seconds <= LongestTime) {
            settings.SetTime(seconds);
        } else {
            Refuse("--time", text,
                   "a whole number of seconds from 1 to " + std::to_string(LongestTime) + ", nor " +
                       Unlimited);
        }
    };
    command
        .add_option_function<std::string>("--time", accept,
                                          "How long to measure (default 5), or \"unlimited\": until Ctrl-C")
        ->type_name("SECONDS|unlimited");
}

void AddTimeOffset(CLI::App& command, HVTestSettings& settings, float& secondsBefore)
{
    const auto accept = [&settings, &secondsBefore](const std::string& text) {
        bool isNumber = false;
        const double seconds = QString::fromStdString(text).toDouble(&isNumber);
        if (!isNumber || !(seconds >= 0 && seconds <= LongestTimeOffset)) {
            Refuse("--time-offset", text, "a number of seconds from 0 to 600");
        }
        settings.SetMeasurementTimeOffset(static_cast<float>(seconds));
        secondsBefore = settings.GetMeasurementTimeOffset();
    };
    secondsBefore = settings.GetMeasurementTimeOffset();
    command
        .add_option_function<std::string>("--time-offset", accept,
                                          "Added to the time for the voltage to rise (default 3.5)")
        ->type_name("SECONDS");
}

} // namespace

std::optional<int> MeasureFunction::Seconds() const
{
    if (continuous == nullptr || continuous->GetTime() == NoTime) {
        return std::nullopt;
    }
    return continuous->GetTime();
}

MeasureFunctions::MeasureFunctions(CLI::App& measure) : _measure(measure)
{
    constexpr size_t Count = 12;
    _functions.reserve(Count); // the options refer to its elements
    AddSingle();
    AddContinuous();
    AddRcd();
}

void MeasureFunctions::AddSingle()
{
    Add<Vesmar::RLNSettings>("rln", "RLN, a single measurement");
    Add<Vesmar::IECSettings>("iec", "IEC, a single measurement");
}

void MeasureFunctions::AddContinuous()
{
    auto& rpe = Add<RPESettings>("rpe", "Protective-earth resistance");
    AddChoice(Command(), "--current", rpe, &RPESettings::SetCurrent, {0, 1, 2, 3});
    AddChoice(Command(), "--method", rpe, &RPESettings::SetMethod, {0, 1, 2, 3});
    auto& riso = Add<RISOSettings>("riso", "Insulation resistance");
    AddChoice(Command(), "--voltage", riso, &RISOSettings::SetVoltage, {0, 1, 2, 3});
    AddChoice(Command(), "--mode", riso, &RISOSettings::SetMode, {1, 2, 4});
    Add<Vesmar::ISUBSettings>("isub", "Substitute leakage current");
    auto& ipe = Add<IPESettings>("ipe", "Protective-conductor current");
    AddChoice(Command(), "--mode", ipe, &IPESettings::SetMode, {1, 2});
    AddChoice(Command(), "--configuration", ipe, &IPESettings::SetConfiguration, {1, 2});
    auto& idelta = Add<IDELTASettings>("idelta", "Differential current");
    AddChoice(Command(), "--mode", idelta, &IDELTASettings::SetMode, {1, 2});
    AddChoice(Command(), "--configuration", idelta, &IDELTASettings::SetConfiguration, {1, 2});
    auto& touch = Add<ITSettings>("it", "Touch current");
    AddChoice(Command(), "--configuration", touch, &ITSettings::SetConfiguration, {1, 2});
    auto& power = Add<POWERSettings>("power", "Power");
    AddChoice(Command(), "--mode", power, &POWERSettings::SetMode, {1, 2});
    auto& hv = Add<HVTestSettings>("hv", "High-voltage test; a dangerous voltage is present while it runs");
    AddChoice(Command(), "--mode", hv, &HVTestSettings::SetMode, {1, 2});
    AddTimeOffset(Command(), hv, _functions.back().secondsBefore);
}

void MeasureFunctions::AddRcd()
{
    auto& rcd = Add<Vesmar::RCDSettings>("rcd", "Residual-current device: Ub/Re, or Ia/Ta");
    AddRcdOptions(Command(), rcd, _functions.back().isReMeasured);
    auto& rcdIec = Add<Vesmar::RCDIECSettings>("rcd-iec", "Residual-current device, IEC variant");
    AddRcdIecOptions(Command(), rcdIec);
}

template <typename Settings>
Settings& MeasureFunctions::Add(const char* name, const char* description)
{
    auto owned = std::make_unique<Settings>();
    Settings& settings = *owned;
    CLI::App* command = _measure.add_subcommand(name, description)->fallthrough();
    const std::string usage = std::string("Usage: vesmar measure ") + name + " [OPTIONS]\n";
    ShowUsage(*command, usage);
    command->footer("\nvesmar measure --help tells of the options that all functions have.\n");
    _functions.push_back({QString::fromLatin1(name), command, std::move(owned),
                          dynamic_cast<ContinuousMeasurementSettings*>(&settings)});
    const bool isSingle = _functions.back().continuous == nullptr;
    const auto acceptCsv = [this, isSingle, name](const std::string& file) {
        if (isSingle) {
            throw CLI::ValidationError("--csv", std::string(name) +
                                                    " gives a single result; only continuous functions have "
                                                    "readings to write to a file");
        }
        _csvFile = QFile::decodeName(file.c_str());
    };
    auto* csv = command->add_option_function<std::string>("--csv", acceptCsv,
                                                          "Write every reading to this file as it comes");
    csv->type_name("FILE")->group(isSingle ? "" : "Options");
    if (!isSingle) {
        AddTime(*command, *_functions.back().continuous);
    }
    return settings;
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
        names += (names.empty() ? "" : ", ") + function.name.toStdString();
    }
    return names;
}

} // namespace Cli
