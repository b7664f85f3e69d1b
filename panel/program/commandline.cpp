#include "panel/program/commandline.h"

#include <CLI/CLI.hpp>

namespace Panel
{

namespace
{

const char Footer[] =
    "\nTouch alone is enough, and so is a keyboard. Neither X nor a window manager is needed:\n"
    "\n  QT_QPA_PLATFORM=linuxfb vesmar-panel\n";

std::shared_ptr<CLI::App> declare(CommandLine* commandLine)
{
    auto app = std::make_shared<CLI::App>("The bench panel of a portable appliance tester", "vesmar-panel");
    app->set_version_flag("--version", "vesmar-panel " VESMAR_VERSION, "Print the version");
    app->add_flag("--simulator", commandLine->isSimulated,
                  "Show it all at a simulated instrument of its own");
    app->add_flag("--full-screen", commandLine->isFullScreen, "Fill the screen, as on a small one");
    app->add_option("--theme", commandLine->theme, "How it looks: light or dark (default light)")
        ->type_name("light|dark")
        ->check(CLI::IsMember({"light", "dark"}));
    app->add_option("--language", commandLine->language, "en or de (default: that of the system)")
        ->type_name("en|de")
        ->check(CLI::IsMember({"en", "de"}));
    app->add_option("--page", commandLine->page, "Begin with this page, such as measure")->type_name("PAGE");
    app->add_option("--units", commandLine->unitsPath,
                    "The units of the readings (default /etc/vesmar/units.json)")
        ->type_name("FILE");
    app->footer(Footer);
    return app;
}

} // namespace

std::optional<CommandLine> parseCommandLine(int argumentCount, char** arguments, int* exitStatus)
{
    CommandLine commandLine;
    const std::shared_ptr<CLI::App> app = declare(&commandLine);
    try {
        app->parse(argumentCount, arguments);
    } catch (const CLI::ParseError& error) {
        *exitStatus = app->exit(error) == 0 ? 0 : 1;
        return std::nullopt;
    }
    return commandLine;
}

std::shared_ptr<const CLI::App> declaredCommandLine()
{
    static CommandLine commandLine;
    return declare(&commandLine);
}

} // namespace Panel
