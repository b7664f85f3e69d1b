#include "cli/verbs/calibrationverb.h"

#include <CLI/CLI.hpp>

#include "cli/kit/dates.h"
#include "cli/kit/link.h"
#include "cli/words/exitstatus.h"
#include "cli/words/format.h"
#include "client/sessions/datewriter.h"

namespace Cli
{

namespace
{

using Vesmar::Tester;
using VesmarClient::DateWriter;
using VesmarClient::InstrumentDate;

constexpr VerbTexts Texts{
    "calibration", "Show or set the date of the last calibration",
    "Usage: vesmar calibration [OPTIONS]\n"
    "       vesmar calibration set DATE [OPTIONS]\n",
    "\n"
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
    "  vesmar-simulator run -- vesmar calibration set 2026-11-21\n"};

constexpr InstrumentDate Calibration{&Tester::CalibrationDateTime, &Tester::CalibrationDateTimeChanged,
                                     &Tester::ConfigureCalibrationDateTime,
                                     &Tester::RetrieveCalibrationDateTime};

/// The time of day is not sent: the instrument reports midnight, which differs from this.
QDateTime NoonOf(const QDate& date)
{
    constexpr int Noon = 12;
    return {date, QTime(Noon, 0), Qt::UTC};
}

class CalibrationWork : public QObject
{
public:
    CalibrationWork(Link& link, const CalibrationVerb& verb)
        : _link(link), _verb(verb), _writer(link.Instrument(), Calibration)
    {
        link.AwaitReadiness();
        connect(&link, &Link::Ready, this, [this] { Begin(); });
        connect(&_writer, &DateWriter::Reported, this,
                [this](const QDateTime& shown) { CheckReported(shown); });
        connect(&link, &Link::Interrupted, this, [this](int signalNumber) { Interrupt(signalNumber); });
    }

private:
    void Begin()
    {
        if (!_verb.Wanted().isValid()) {
            Show(_link.Instrument().CalibrationDateTime());
            return;
        }
        _isSetting = true;
        _link.FailAfter(
            _verb.ConfirmTimeout(),
            QStringLiteral("The instrument has not reported the date of its calibration as set."));
        _writer.Set(NoonOf(_verb.Wanted()));
    }

    void CheckReported(const QDateTime& shown)
    {
        if (shown.date() == _verb.Wanted()) {
            Show(shown);
            return;
        }
        _link.Fail(ExitStatus::Failed,
                   {QStringLiteral("not-set"),
                    QStringLiteral("The instrument did not take the date %1: it was last "
                                   "calibrated at %2.")
                        .arg(_verb.Wanted().toString(Qt::ISODate), Cli::Show(shown).text)});
    }

    void Show(const QDateTime& calibration)
    {
        const Shown shown = Cli::Show(calibration);
        _link.Print(_link.IsJson() ? EventLine(QDateTime::currentDateTime(), QStringLiteral("calibration"),
                                               {{QStringLiteral("CalibrationDateTime"), shown.json}})
                                   : InfoLine(QStringLiteral("Last calibrated"), shown.text));
        _link.Finish(DoneWith(_isSetting ? QStringLiteral("The date of the last calibration is set.")
                                         : QStringLiteral("The date of the last calibration was read.")));
    }

    /// A program that ended while the date is being set would leave the instrument in calibration mode.
    void Interrupt(int signalNumber)
    {
        if (_isSetting) {
            WriteError(
                QStringLiteral("The instrument is in calibration mode; waiting until it has left it (signal "
                               "%1).")
                    .arg(signalNumber));
        } else {
            _link.Finish(EndedBySignal(signalNumber));
        }
    }

    Link& _link;
    const CalibrationVerb& _verb;
    DateWriter _writer;
    bool _isSetting = false;
};

} // namespace

CalibrationVerb::CalibrationVerb(CLI::App& program) : Verb(program, Texts)
{
    AddSetCommand("Set the date")
        .add_option_function<std::string>(
            "DATE", [this](const std::string& text) { _wanted = ParseDate(text); }, "What to set it to")
        ->required()
        ->type_name("");
    constexpr double Least = 5; // a shorter time would end between the two restarts
    AddConfirmTimeout(_confirmTimeout, Least);
}

int CalibrationVerb::Run()
{
    Link link(Options());
    const CalibrationWork work(link, *this);
    return link.Work();
}

} // namespace Cli
