#include "cli/verbs/calibrationverb.h"

#include <CLI/CLI.hpp>

#include "cli/kit/connection.h"
#include "cli/kit/dates.h"
#include "cli/words/format.h"
#include "cli/words/text.h"

namespace Cli
{

namespace
{

using VesmarClient::DateJob;

constexpr VerbTexts Texts{
    "calibration", QT_TRANSLATE_NOOP("Cli::Text", "Show or set the date of the last calibration"),
    QT_TRANSLATE_NOOP("Cli::Text", "Usage: vesmar calibration [OPTIONS]\n"
                                   "       vesmar calibration set DATE [OPTIONS]\n"),
    QT_TRANSLATE_NOOP(
        "Cli::Text", "\n"
                     "Shows the date of the last calibration. \"set\" sets it to DATE, as in 2026-11-21, in\n"
                     "the years 2001 to 2099. The instrument is restarted twice for it, by way of its\n"
                     "calibration mode, which takes a few seconds; a signal does not cut that short. It\n"
                     "succeeds only when the instrument itself has then reported that date.\n"
                     "\n"
                     "JSON: see docs/events.md; events calibration and result.\n"
                     "\n"
                     "Exit status: 0 shown, or set; 1 bad usage; 2 the link did not come up in time; 3 the\n"
                     "instrument is in update mode, or the output cannot be written; 4 the instrument does\n"
                     "not report the date set; 7 the link was lost before it did; 128 and the signal's\n"
                     "number where a signal came first.\n"
                     "\n"
                     "Example, without an instrument:\n"
                     "  vesmar-simulator run -- vesmar calibration set 2026-11-21\n")};

class CalibrationWork : public QObject
{
public:
    CalibrationWork(Connection& connection, const CalibrationVerb& verb)
        : _connection(connection), _instrument(connection.Instrument()), _verb(verb)
    {
        connect(&connection, &Connection::Up, this, [this] { Begin(); });
        connect(&connection, &Connection::Interrupted, this,
                [this](int signalNumber) { Interrupt(signalNumber); });
    }

private:
    void Begin()
    {
        if (!_verb.Wanted().isValid()) {
            Show(_instrument.calibrationDate());
            return;
        }
        _isSetting = true;
        const auto* job = _instrument.setCalibrationDate(_verb.Wanted().startOfDay(Qt::UTC),
                                                         static_cast<int>(_verb.ConfirmTimeout().count()));
        connect(job, &DateJob::finished, this, [this, job] { End(*job); });
    }

    void End(const DateJob& job)
    {
        if (job.outcome() == VesmarClient::Outcome::Completed) {
            Show(job.reported());
        } else {
            _connection.Fail(
                job, Text::tr("The instrument did not take the date %1: it was last calibrated at %2.")
                         .arg(_verb.Wanted().toString(Qt::ISODate), Cli::Show(job.reported()).text));
        }
    }

    void Show(const QDateTime& calibration)
    {
        const Shown shown = Cli::Show(calibration);
        _connection.Print(_connection.IsJson()
                              ? EventLine(QDateTime::currentDateTime(), QStringLiteral("calibration"),
                                          {{QStringLiteral("CalibrationDateTime"), shown.json}})
                              : InfoLine(Text::tr("Last calibrated"), shown.text));
        _connection.Finish(DoneWith(_isSetting ? Text::tr("The date of the last calibration is set.")
                                               : Text::tr("The date of the last calibration was read.")));
    }

    /// A program that ended while the date is being set would leave the instrument in calibration mode.
    void Interrupt(int signalNumber)
    {
        if (_isSetting) {
            WriteError(Text::tr("The instrument is in calibration mode; waiting until it has left it (signal "
                                "%1).")
                           .arg(signalNumber));
        } else {
            _connection.Finish(EndedBySignal(signalNumber));
        }
    }

    Connection& _connection;
    VesmarClient::Instrument& _instrument;
    const CalibrationVerb& _verb;
    bool _isSetting = false;
};

} // namespace

CalibrationVerb::CalibrationVerb(CLI::App& program) : Verb(program, Texts)
{
    AddSetCommand(QT_TRANSLATE_NOOP("Cli::Text", "Set the date"))
        .add_option_function<std::string>(
            "DATE", [this](const std::string& text) { _wanted = ParseDate(text); },
            Text::tr("What to set it to").toStdString())
        ->required()
        ->type_name("");
    constexpr double Least = 5; // a shorter time would end between the two restarts
    AddConfirmTimeout(_confirmTimeout, Least);
}

int CalibrationVerb::Run()
{
    Connection connection(Options());
    const CalibrationWork work(connection, *this);
    return connection.Work();
}

} // namespace Cli
