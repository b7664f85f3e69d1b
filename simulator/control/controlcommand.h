#pragma once

#include <chrono>
#include <optional>

#include <QString>

#include "simulator/control/scenarios.h"

namespace Simulator
{

/// A command by which a person or a test controls the simulated instrument.
struct ControlCommand {
    enum class Verb { Mode, Restart, Error, Function, Fault, Scenario };

    Verb verb = Verb::Fault;
    int number = 0; ///< for Mode, Restart, Error and Function; for Scenario the one behind its name
    Fault fault = Fault::None;                          ///< for Fault
    Scenario scenario = Scenario::None;                 ///< for Scenario
    std::chrono::milliseconds delay{DefaultSlowAnswer}; ///< for Fault::Slow
};

/// Understands "mode N", "restart N", "error N", "function N", "scenario NAME [N]", "fault NAME [MS]",
/// "unplug" and "plug". A fault's name may also stand for a scenario. Returns nothing for any other text;
/// *error then tells the reason.
std::optional<ControlCommand> ParseControlCommand(const QString& text, QString* error);

} // namespace Simulator
