#include "cli/verbs/clockverb.h"

#include <CLI/CLI.hpp>

#include <cstdlib>

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
    "clock", QT_TRANSLATE_NOOP("Cli::Text", "Show or set the instrument's clock"),
    QT_TRANSLATE_NOOP("Cli::Text", "Usage: vesmar clock [OPTIONS]\n"
                                   "       vesmar clock set [DATETIME|now] [OPTIONS]\n"),
    QT_TRANSLATE_NOOP(
        "Cli::Text", "\n"
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
                     "  vesmar-simulator run -- vesmar clock set 2026-11-21T18:00:00\n")};

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
        return Text::tr("none");
    }
    return (seconds < 0 ? Text::tr("%1 s behind this computer") : Text::tr("%1 s ahead of this computer"))
        .arg(std::abs(seconds));
}

class ClockWork : public QObject
{
public:
    ClockWork(Connection& connection, const ClockVerb& verb)
        : _connection(connection), _instrument(connection.Instrument()), _verb(verb)
    {
        connect(&_instrument, &VesmarClient::Instrument::clockChanged, this,
                [this] { _readAt = WallClock(); });
        connect(&connection, &Connection::Up, this, [this] { Begin(); });
        connect(&connection, &Connection::Interrupted, this,
                [this](int signalNumber) { _connection.Finish(EndedBySignal(signalNumber)); });
    }

private:
    void Begin()
    {
        if (!_verb.IsSetting()) {
            Show(_instrument.clock());
            return;
        }
        _value = _verb.Wanted().isValid() ? _verb.Wanted() : NearestSecond(WallClock());
        const auto* job = _instrument.setClock(_value, static_cast<int>(_verb.ConfirmTimeout().count()));
        connect(job, &DateJob::reportedChanged, this, [this] { _readAt = WallClock(); });
        connect(job, &DateJob::finished, this, [this, job] { End(*job); });
    }

    void End(const DateJob& job)
    {
        if (job.outcome() == VesmarClient::Outcome::Completed) {
            Show(job.reported());
        } else {
            _connection.Fail(job, Text::tr("The instrument did not take the time %1: its clock shows %2.")
                                      .arg(Cli::Show(_value).text, Cli::Show(job.reported()).text));
        }
    }

    void Show(const QDateTime& clock)
    {
        const Shown shown = Cli::Show(clock);
        const qint64 difference = (_readAt.isValid() ? _readAt : WallClock()).secsTo(clock);
        if (_connection.IsJson()) {
            _connection.Print(EventLine(
                QDateTime::currentDateTime(), QStringLiteral("clock"),
                {{QStringLiteral("CurrentDateTime"), shown.json},
                 {QStringLiteral("difference"), clock.isValid() ? QJsonValue(difference) : QJsonValue()}}));
        } else {
            _connection.Print(InfoLine(Text::tr("Clock"), shown.text));
            _connection.Print(InfoLine(Text::tr("Difference"),
                                       clock.isValid() ? DifferenceText(difference) : Text::tr("unknown")));
        }
        _connection.Finish(
            DoneWith(_verb.IsSetting() ? Text::tr("The clock is set.") : Text::tr("The clock was read.")));
    }

    Connection& _connection;
    VesmarClient::Instrument& _instrument;
    const ClockVerb& _verb;
    QDateTime _readAt;
    QDateTime _value;
};

} // namespace

ClockVerb::ClockVerb(CLI::App& program)
    : Verb(program, Texts), _set(AddSetCommand(QT_TRANSLATE_NOOP("Cli::Text", "Set the clock")))
{
    constexpr int MostWords = 2; // with a blank in between
    _set.add_option_function<std::vector<std::string>>(
            "DATETIME", [this](const std::vector<std::string>& words) { ParseWanted(words); },
            Text::tr("What to set it to (default: now)").toStdString())
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
    Connection connection(Options());
    const ClockWork work(connection, *this);
    return connection.Work();
}

} // namespace Cli
