#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QString>

#include "simulator/control/controlcommand.h"
#include "simulator/faults/faultentry.h"
#include "simulator/line/instrument.h"

namespace CLI
{
class App;
} // namespace CLI

namespace Simulator
{

/// A command and when it is due, counted from the start.
struct TimedCommand {
    std::chrono::milliseconds at;
    ControlCommand command;
};

/// What the user asked for: a link, a program or an image to confirm is set.
struct CommandLine {
    InstrumentOptions instrument;
    std::vector<TimedCommand> schedule;
    QString faultsPath;             ///< where the faults to start with are written down; empty for none
    std::vector<FaultEntry> faults; ///< read from there before anything is served
    QString playbackPath;           ///< where the recording to play is written down; empty for none
    QString linkPath;
    std::vector<std::string> program;
    QString imagePath; ///< whose confirmation is to be printed
};

/// Nothing when the program ends here; *exitStatus then says how. Help, version and errors are printed.
std::optional<CommandLine> ParseCommandLine(int argumentCount, char** arguments, int* exitStatus);

/// The command line as it is declared, for those who describe it.
std::shared_ptr<const CLI::App> DeclaredCommandLine();

} // namespace Simulator
