#pragma once

#include <chrono>
#include <optional>

#include <QString>

#include "simulator/control/scenarios.h"

namespace Simulator
{

/// One thing that a person or a test makes the simulated instrument do.
struct ControlCommand {
    enum class Verb { Mode, Restart, Error, Function, Fault, Scenario };

    Verb verb = Verb::Fault;
    int number = 0; ///< of Mode, Restart, Error, Function; of Scenario the one that follows its name
    Fault fault = Fault::None;                          ///< of Fault
    Scenario scenario = Scenario::None;                 ///< of Scenario
    std::chrono::milliseconds delay{DefaultSlowAnswer}; ///< of Fault::Slow
};

/// Understands "mode N", "restart N", "error N", "function N", "scenario NAME [N]", "fault NAME [MS]",
/// "unplug" and "plug"; a fault's name counts as a scenario's too. Otherwise nothing, and *error says why.
std::optional<ControlCommand> ParseControlCommand(const QString& text, QString* error);

} // namespace Simulator
