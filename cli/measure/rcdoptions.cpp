#include "cli/measure/rcdoptions.h"

#include <QString>

#include "cli/kit/choice.h"
#include "client/catalogue/rcdtest.h"

namespace Cli
{

namespace
{

using Vesmar::MeasurementSettings;
using Vesmar::RCDIECSettings;
using Vesmar::RCDSettings;
using VesmarClient::ModesOfRcd;
using VesmarClient::ModesOfRcdIec;
using VesmarClient::RcdMode;
using VesmarClient::RcdModes;
using VesmarClient::RcdTest;

constexpr float HighestResistance = 1e6F;

std::vector<Choice> ChoicesOf(const RcdModes& modes)
{
    std::vector<Choice> choices;
    for (const RcdMode& mode : modes) {
        choices.push_back({mode.name, mode.number});
    }
    return choices;
}

/// Adds the options that both functions have.
template <typename Settings>
void AddSettings(CLI::App& command, Settings& settings, const RcdModes& modes)
{
    AddChoice(command, "--mode", settings, &Settings::SetMode, ChoicesOf(modes), "What is done; required");
    AddChoice(command, "--quantity", settings, &Settings::SetQuantity, {0, 1, 2, 3});
    AddChoice(command, "--phase", settings, &Settings::SetPhase, {0, 1, 2, 3});
    AddChoice(command, "--current", settings, &Settings::SetCurrent, {0, 1, 2, 3});
    AddChoice(command, "--type", settings, &Settings::SetType, {0, 1, 2, 3});
}

/// The mode that was given. Without a mode, the library would do nothing.
const RcdMode& GivenMode(const MeasurementSettings& settings, const RcdModes& modes)
{
    const RcdMode* mode = VesmarClient::RcdModeOf(settings);
    if (mode == nullptr) {
        throw CLI::ValidationError("--mode", "none given; it is one of " + Listed(ChoicesOf(modes)));
    }
    return *mode;
}

CLI::Option& AddRe(CLI::App& command, RCDSettings& settings)
{
    const auto accept = [&settings](const std::string& text) {
        bool isNumber = false;
        const float resistance = QString::fromStdString(text).toFloat(&isNumber);
        if (!isNumber || !(resistance >= 0 && resistance <= HighestResistance)) {
            Refuse("--re", text, "a number from 0 to 1000000");
        }
        settings.SetRe(resistance);
    };
    auto* option = command.add_option_function<std::string>(
        "--re", accept, "For ia-ta-1 and ia-ta-2: the Re that ub-re has given (default 0)");
    return *option->type_name("OHM");
}

/// Checks that Re comes from one place, and that no test is given the Re that it measures itself.
void CheckRe(const RcdMode& mode, const CLI::Option& re, const CLI::Option& withUbRe)
{
    const CLI::Option& given = re.count() > 0 ? re : withUbRe;
    if (mode.test == RcdTest::UbRe && given.count() > 0) {
        throw CLI::ValidationError(given.get_name(), "ub-re measures Re itself; leave this option out");
    }
    if (re.count() > 0 && withUbRe.count() > 0) {
        throw CLI::ValidationError("--re", "not together with --with-ub-re, which measures Re; give one");
    }
}

} // namespace

void AddRcdOptions(CLI::App& command, RCDSettings& settings, bool& isReMeasured)
{
    AddSettings(command, settings, ModesOfRcd);
    const CLI::Option& re = AddRe(command, settings);
    const CLI::Option& withUbRe = *command.add_flag(
        "--with-ub-re", isReMeasured, "For ia-ta-1 and ia-ta-2: run a ub-re test first, and take its Re");
    command.final_callback(
        [&settings, &re, &withUbRe] { CheckRe(GivenMode(settings, ModesOfRcd), re, withUbRe); });
}

void AddRcdIecOptions(CLI::App& command, RCDIECSettings& settings)
{
    AddSettings(command, settings, ModesOfRcdIec);
    command.add_flag_callback(
        "--swap-ln", [&settings] { settings.SetIsLNSwapped(true); }, "Swap line and neutral");
    command.final_callback([&settings] { GivenMode(settings, ModesOfRcdIec); });
}

} // namespace Cli
