#include "cli/verbs/clockverb.h"

#include <CLI/CLI.hpp>

#include <QElapsedTimer>

#include <cstdlib>

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
    "clock", "Show or set the instrument's clock",
    "Usage: vesmar clock [OPTIONS]\n"
    "       vesmar clock set [DATETIME|now] [OPTIONS]\n",
    "\n"
    "Shows the instrument's clock, and by how many seconds it is ahead of this computer's\n"
    "or behind it. The instrument knows no time zone: both are what a clock on the wall\n"
    "shows. \"set\" sets it to DATETIME, as in 2026-11-21T18:00:00 or with a blank, in the\n"
    "years 2001 to 2099, or without one to this computer's; it succeeds only when the\n"
    "instrument itself has then reported that time, running, to within 2 seconds.\n"
    "\n"
    "JSON: see docs/events.md; events clock and result.\n"
    "\n"
    "Exit status: 0 shown, or set; 1 bad usage; 2 the link did not come up in time; 3 the\n"
    "instrument is in update mode, or the output cannot be written; 4 the instrument does\n"
    "not report the time set; 7 the link was lost before it did; 128 and the signal's\n"
    "number where a signal came first.\n"
    "\n"
    "Example, without an instrument:\n"
    "  vesmar-simulator run -- vesmar clock set 2026-11-21T18:00:00\n"};

constexpr InstrumentDate Clock{&Tester::CurrentDateTime, &Tester::CurrentDateTimeChanged,
                               &Tester::ConfigureCurrentDateTime, &Tester::RetrieveCurrentDateTime};

/// The clock has no fractions of a second.
QDateTime NearestSecond(const QDateTime& value)
{
    constexpr int Second = 1000;
    const QDateTime half = value.addMSecs(Second / 2);
    return half.addMSecs(-half.time().msec());
}

QString DifferenceText(qint64 seconds)
{
    if (seconds == 0) {
        return QStringLiteral("none");
    }
    return QStringLiteral("%1 s %2 this computer")
        .arg(std::abs(seconds))
        .arg(seconds < 0 ? QStringLiteral("behind") : QStringLiteral("ahead of"));
}

class ClockWork : public QObject
{
public:
    ClockWork(Link& link, const ClockVerb& verb) : _link(link), _verb(verb), _writer(link.Instrument(), Clock)
    {
        link.AwaitReadiness();
        connect(&link.Instrument(), &Tester::CurrentDateTimeChanged, this, [this] { _readAt = WallClock(); });
        connect(&link, &Link::Ready, this, [this] { Begin(); });
        connect(&_writer, &DateWriter::Reported, this,
                [this](const QDateTime& shown) { CheckReported(shown); });
        connect(&link, &Link::Interrupted, this,
                [this](int signalNumber) { _link.Finish(EndedBySignal(signalNumber)); });
    }

private:
    void Begin()
    {
        if (!_verb.IsSetting()) {
            Show(AsWallClock(_link.Instrument().CurrentDateTime()));
            return;
        }
        _link.FailAfter(_verb.ConfirmTimeout(),
                        QStringLiteral("The instrument has not reported its clock as set and running."));
        _value = _verb.Wanted().isValid() ? _verb.Wanted() : NearestSecond(WallClock());
        _sinceSet.start();
        _writer.Set(_value);
    }

    /// A running clock shows a time shortly after the one that it was set to.
    void CheckReported(const QDateTime& shown)
    {
        constexpr qint64 Tolerance = 2000;
        const qint64 deviation = _value.addMSecs(_sinceSet.elapsed()).msecsTo(AsWallClock(shown));
        if (shown.isValid() && std::abs(deviation) <= Tolerance) {
            Show(AsWallClock(shown));
            return;
        }
        _link.Fail(ExitStatus::Failed,
                   {QStringLiteral("not-set"),
                    QStringLiteral("The instrument did not take the time %1: its clock shows "
                                   "%2.")
                        .arg(Cli::Show(_value).text, Cli::Show(shown).text)});
    }

    void Show(const QDateTime& clock)
    {
        const Shown shown = Cli::Show(clock);
        const qint64 difference = (_readAt.isValid() ? _readAt : WallClock()).secsTo(clock);
        if (_link.IsJson()) {
            _link.Print(EventLine(
                QDateTime::currentDateTime(), QStringLiteral("clock"),
                {{QStringLiteral("CurrentDateTime"), shown.json},
                 {QStringLiteral("difference"), clock.isValid() ? QJsonValue(difference) : QJsonValue()}}));
        } else {
            _link.Print(InfoLine(QStringLiteral("Clock"), shown.text));
            _link.Print(InfoLine(QStringLiteral("Difference"),
                                 clock.isValid() ? DifferenceText(difference) : QStringLiteral("unknown")));
        }
        _link.Finish(DoneWith(_verb.IsSetting() ? QStringLiteral("The clock is set.")
                                                : QStringLiteral("The clock was read.")));
    }

    Link& _link;
    const ClockVerb& _verb;
    DateWriter _writer;
    QDateTime _readAt;
    QDateTime _value;
    QElapsedTimer _sinceSet;
};

} // namespace

ClockVerb::ClockVerb(CLI::App& program) : Verb(program, Texts), _set(AddSetCommand("Set the clock"))
{
    constexpr int MostWords = 2; // with a blank in between
    _set.add_option_function<std::vector<std::string>>(
            "DATETIME", [this](const std::vector<std::string>& words) { ParseWanted(words); },
            "What to set it to (default: now)")
        ->expected(0, MostWords)
        ->type_name("");
    AddConfirmTimeout(_confirmTimeout);
}

void ClockVerb::ParseWanted(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    _wanted = text == "now" ? QDateTime() : ParseDateTime(text);
}

bool ClockVerb::IsSetting() const
{
    return _set.parsed();
}

int ClockVerb::Run()
{
    Link link(Options());
    const ClockWork work(link, *this);
    return link.Work();
}

} // namespace Cli
