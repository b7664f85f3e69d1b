#include "cli/verbs/updateverb.h"

#include <CLI/CLI.hpp>

#include <QFile>

#include "cli/kit/signalwatcher.h"
#include "cli/output/output.h"
#include "cli/words/exitstatus.h"
#include "cli/words/text.h"

namespace Cli
{

namespace
{

constexpr VerbTexts Texts{
    "update", QT_TRANSLATE_NOOP("Cli::Text", "Send the instrument new firmware"),
    QT_TRANSLATE_NOOP("Cli::Text", "Usage: vesmar update IMAGE --confirmation FILE [OPTIONS]\n"),
    QT_TRANSLATE_NOOP(
        "Cli::Text",
        "\n"
        "Checks both files before anything is sent: the image is a whole number of sectors of\n"
        "512 bytes, the confirmation has 2 bytes or more. Then shows the instrument's version,\n"
        "sends it the image in update mode, and waits until it is back in its normal mode with\n"
        "the version that it now reports. An instrument that was left in update mode is taken\n"
        "up there.\n"
        "\n"
        "An image that is cut short leaves the instrument without firmware. So while it is sent,\n"
        "Ctrl-C, SIGTERM and SIGHUP (a closed terminal) do nothing but get an answer, and Ctrl-Z\n"
        "and Ctrl-\\ do nothing at all. Do not switch the instrument off.\n"
        "\n"
        "--offline sends the image without the library's machine behind it: for an instrument\n"
        "that does not tell its version any more. It does not insist on the link before, and no\n"
        "signal ends it once it has begun.\n"
        "\n"
        "JSON: see docs/events.md; events status, error, progress and result.\n"
        "\n"
        "Exit status:\n"
        "  0  the instrument is back with its firmware\n"
        "  1  bad usage, or a file that cannot be used; nothing was sent\n"
        "  2  the link did not come up in time\n"
        "  3  done, but not all of the output could be written\n"
        "  4  the update failed (the error is told), or the instrument stays in update mode\n"
        "  7  the link was lost before the first sector, or the instrument did not come back\n"
        "  128 and the signal's number where a signal ended it before the first sector, or after\n"
        "  the confirmation\n"
        "\n"
        "Example, without an instrument:\n"
        "  head -c 4096 /dev/urandom > image; vesmar-simulator confirmation image > confirmation\n"
        "  vesmar-simulator run -- vesmar update image --confirmation confirmation\n")};

} // namespace

UpdateVerb::UpdateVerb(CLI::App& program) : Verb(program, Texts)
{
    const auto fillPath = [](QString& target) {
        return [&target](const std::string& path) { target = QFile::decodeName(path.c_str()); };
    };
    Command()
        .add_option_function<std::string>("IMAGE", fillPath(_update.image),
                                          Text::tr("The firmware").toStdString())
        ->required()
        ->type_name("");
    Command()
        .add_option_function<std::string>(
            "--confirmation", fillPath(_update.confirmation),
            Text::tr("The file that confirms the firmware; its last two bytes are sent").toStdString())
        ->required()
        ->type_name("FILE");
    Command().add_flag("--offline", _update.isOffline,
                       Text::tr("Send it without the library's machine behind it").toStdString());
    AddConfirmTimeout(_update.confirmTimeout);
}

int UpdateVerb::Run()
{
    const UpdateFiles files = ReadUpdateFiles(_update.image, _update.confirmation);
    if (!files.problem.isEmpty()) {
        WriteError(files.problem);
        return ExitStatus::BadUsage;
    }
    IgnoreHaltingSignals();
    Connection connection(Options());
    UpdateView view(Options().isJson);
    const UpdateRun run(connection, view, files, _update);
    return view.Finish(connection.Work());
}

} // namespace Cli
