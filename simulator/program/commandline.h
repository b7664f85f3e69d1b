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

/// A command and the time when it is due, counted from the start.
struct TimedCommand {
    std::chrono::milliseconds at;
    ControlCommand command;
};

/// The request of the user. It has a link, a program or an image to confirm.
struct CommandLine {
    InstrumentOptions instrument;
    std::vector<TimedCommand> schedule;
    QString faultsPath;             ///< the file of the faults to start with; empty for none
    std::vector<FaultEntry> faults; ///< read from that file before the instrument starts
    QString playbackPath;           ///< the file of the recording to play; empty for none
    QString linkPath;
    std::vector<std::string> program;
    QString imagePath; ///< the image whose confirmation is printed
};

/// Returns nothing when the program ends here, with *exitStatus. Prints help, version and errors.
std::optional<CommandLine> ParseCommandLine(int argumentCount, char** arguments, int* exitStatus);

/// Returns the declared command line, for programs that describe it.
std::shared_ptr<const CLI::App> DeclaredCommandLine();

} // namespace Simulator
