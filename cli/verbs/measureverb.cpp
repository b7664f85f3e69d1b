#include "cli/verbs/measureverb.h"

#include <CLI/CLI.hpp>

#include "cli/kit/signalwatcher.h"
#include "cli/output/output.h"
#include "cli/words/exitstatus.h"
#include "cli/words/text.h"

namespace Cli
{

namespace
{

using Form = MeasurementView::Form;

constexpr VerbTexts Texts{
    "measure", QT_TRANSLATE_NOOP("Cli::Text", "Run a measurement, from its settings to its result"),
    QT_TRANSLATE_NOOP("Cli::Text", "Usage: vesmar measure FUNCTION [OPTIONS]\n"
                                   "       vesmar measure FUNCTION --help\n"),
    QT_TRANSLATE_NOOP(
        "Cli::Text",
        "\n"
        "Connects, prepares and starts the function, watches it to its end, and waits until\n"
        "the instrument is confirmed to have stopped. Readings are in the instrument's own\n"
        "units; a dash is no value. --csv takes a regular file, and overwrites it.\n"
        "\n"
        "While hv runs, a DANGEROUS VOLTAGE is present. When no reading comes for a second or\n"
        "longer, the program says so while that lasts, and in the result.\n"
        "\n"
        "Ctrl-C, SIGTERM, SIGHUP (a closed terminal) and an output that nobody reads any more\n"
        "abort the measurement; the program ends once the instrument is confirmed to have\n"
        "stopped. A second signal does not cut that short. Ctrl-Z and Ctrl-\\ do nothing. If the\n"
        "program is killed during hv, the program vesmar-guard stops the instrument.\n"
        "\n"
        "JSON: see docs/events.md; events status, error, reading, gap and result.\n"
        "\n"
        "Exit status:\n"
        "  0  measured, and the instrument has stopped\n"
        "  1  bad usage, or a file that cannot be written; nothing was sent\n"
        "  2  the link did not come up in time\n"
        "  3  the instrument is in update mode, vesmar-guard is missing, or not all of the output\n"
        "     could be written\n"
        "  4  the measurement failed (the error is told); the instrument has stopped\n"
        "  5  aborted; the instrument has stopped\n"
        "  6  the stop is not confirmed: the instrument may still be running, and high voltage\n"
        "     may be on; switch it off at the instrument\n"
        "  7  the link was lost; the message tells whether it came back and the instrument has\n"
        "     stopped, or its state is unknown\n"
        "  8  measured, and the instrument has stopped, but for a while no reading came\n"
        "  128 and the signal's number where a signal came before the link was up\n"
        "\n"
        "Example, without an instrument:\n"
        "  vesmar-simulator run -- vesmar measure rpe --current 2 --method 1 --time 3\n")};

} // namespace

MeasureVerb::MeasureVerb(CLI::App& program) : Verb(program, Texts), _functions(Command())
{
    AddSeconds("--prepare-timeout",
               QT_TRANSLATE_NOOP("Cli::Text", "How long preparing, and then starting, may take (default 10)"),
               ShortestTimeout, _prepareTimeout);
    AddSeconds("--stop-timeout",
               QT_TRANSLATE_NOOP("Cli::Text",
                                 "How long stopping, or the way back of a lost link, may take (default 15)"),
               ShortestTimeout, _stopTimeout);
    Command().allow_extras(); // for an error of its own
    Command().final_callback([this] { CheckFunction(); });
}

void MeasureVerb::CheckFunction() const
{
    const std::vector<std::string> extras = Command().remaining();
    if (_functions.Chosen() == nullptr) {
        const QString names = QString::fromStdString(_functions.Names());
        const QString complaint = extras.empty() ? Text::tr("no function given; it is one of %1").arg(names)
                                                 : Text::tr("no function: \"%1\"; it is one of %2")
                                                       .arg(QString::fromStdString(extras.front()), names);
        throw CLI::ValidationError("measure", complaint.toStdString());
    }
    if (!extras.empty()) {
        throw CLI::ExtrasError(extras);
    }
    if (OutputForm() == Form::Csv && Options().isJson) {
        throw CLI::ValidationError(
            "--csv", Text::tr("the standard output is either JSON or CSV; name a file, or leave "
                              "--json out")
                         .toStdString());
    }
}

VesmarClient::MeasurementTimeouts MeasureVerb::Timeouts() const
{
    return {static_cast<int>(_prepareTimeout.count()), static_cast<int>(_stopTimeout.count())};
}

MeasurementView::Form MeasureVerb::OutputForm() const
{
    if (_functions.CsvFile() == QLatin1String("-")) {
        return Form::Csv;
    }
    return Options().isJson ? Form::Json : Form::Text;
}

int MeasureVerb::Run()
{
    const MeasureFunction& function = *_functions.Chosen();
    std::unique_ptr<ReadingsFile> file;
    const Form form = OutputForm();
    if (!_functions.CsvFile().isEmpty() && form != Form::Csv) {
        file = std::make_unique<ReadingsFile>(_functions.CsvFile(), CsvHeader(function.info));
        if (!file->Problem().isEmpty()) {
            WriteError(file->Problem());
            return ExitStatus::BadUsage;
        }
    }
    IgnoreHaltingSignals();
    Connection connection(Options());
    MeasurementView view(function.settings, form, file.get());
    const MeasurementRun run(connection, view, function.settings, Timeouts());
    return view.Finish(connection.Work());
}

} // namespace Cli
