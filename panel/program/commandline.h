#pragma once

#include <memory>
#include <optional>
#include <string>

namespace CLI
{
class App;
} // namespace CLI

namespace Panel
{

/// What the user asks for.
struct CommandLine {
    bool isSimulated = false;
    bool isFullScreen = false;
    std::string theme = "light"; ///< "light" or "dark".
    std::string language;        ///< "en" or "de"; empty for that of the system.
    std::string page;            ///< The page to begin with; empty for the first one.
    std::string unitsPath;       ///< Empty for the file of the system.
};

/// Returns nothing when the program ends here, with *exitStatus. Prints help, version and errors.
std::optional<CommandLine> parseCommandLine(int argumentCount, char** arguments, int* exitStatus);

/// Returns the declared command line, for programs that describe it.
std::shared_ptr<const CLI::App> declaredCommandLine();

} // namespace Panel
