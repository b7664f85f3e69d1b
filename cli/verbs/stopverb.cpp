#include "cli/verbs/stopverb.h"

#include "cli/kit/connection.h"
#include "cli/words/exitstatus.h"
#include "cli/words/text.h"
#include "cli/words/values.h"

namespace Cli
{

namespace
{

using VesmarClient::Function;
using VesmarClient::Outcome;
using VesmarClient::StopJob;

constexpr VerbTexts Texts{
    "stop", QT_TRANSLATE_NOOP("Cli::Text", "End whatever runs at the instrument, and prove it"),
    QT_TRANSLATE_NOOP("Cli::Text", "Usage: vesmar stop [--json] [--timeout TIME] [--trace]\n"),
    QT_TRANSLATE_NOOP(
        "Cli::Text",
        "Ends the function that is active at the instrument, whoever has started it, and waits\n"
        "for the proof: the instrument itself reports that no function is active any more. It\n"
        "begins as soon as the line is open, and gives the instrument 20 seconds. A program\n"
        "that holds the line is named; end that program first.\n"
        "\n"
        "JSON: see docs/events.md; events unattended, stop and result.\n"
        "\n"
        "Exit status: 0 it is proved that nothing runs; 1 bad usage; 2 the link did not come up\n"
        "in time, or another program holds the line, so that nothing is known; 3 the instrument\n"
        "is in update mode, or the output cannot be written; 6, 7 it is not proved that nothing\n"
        "runs (7: the link is lost): switch the instrument off; 128 and the signal's number\n"
        "where a signal came first.\n"
        "\n"
        "Example, without an instrument:\n"
        "  vesmar-simulator run --at 0:\"function 9\" -- vesmar stop\n")};

class StopWork : public QObject
{
public:
    explicit StopWork(Connection& connection) : _connection(connection), _instrument(connection.Instrument())
    {
        connect(&_instrument, &VesmarClient::Instrument::activeFunctionChanged, this,
                [this](Function function) { ReceiveFunction(function); });
        connect(&_instrument, &VesmarClient::Instrument::linkStateChanged, this, [this] { Begin(); });
        connect(&connection, &Connection::Interrupted, this,
                [this](int signalNumber) { _connection.Finish(EndedBySignal(signalNumber)); });
    }

private:
    void ReceiveFunction(Function function)
    {
        if (function != Function::None && function != Function::Monitoring) {
            _found = function;
        }
    }

    /// The job waits by itself for a link that is not up yet.
    void Begin()
    {
        if (_job == nullptr) {
            _job = _instrument.stop();
            connect(_job, &StopJob::finished, this, [this](Outcome outcome) { End(outcome); });
        }
    }

    void End(Outcome outcome)
    {
        if (outcome == Outcome::Completed) {
            Show();
        } else if (outcome == Outcome::LinkLost) {
            _connection.Fail(*_job);
        } else {
            _connection.Fail(ExitStatus::StopNotConfirmed, FailureOf(_job->failure()));
        }
    }

    void Show()
    {
        const bool hasStopped = _found != Function::None;
        const QString message =
            hasStopped ? Text::tr("%1 has been stopped. The instrument confirms that nothing runs any more.")
                             .arg(Cli::Show(_found).text)
                       : Text::tr("Nothing runs at the instrument, which it confirms.");
        _connection.Print(_connection.IsJson()
                              ? EventLine(QDateTime::currentDateTime(), QStringLiteral("stop"),
                                          {{QStringLiteral("function"),
                                            hasStopped ? Cli::Show(_found).json : QJsonValue()}})
                              : message.toUtf8() + '\n');
        _connection.Finish(DoneWith(message));
    }

    Connection& _connection;
    VesmarClient::Instrument& _instrument;
    StopJob* _job = nullptr; ///< Null until it has begun; the instrument's.
    Function _found = Function::None;
};

} // namespace

StopVerb::StopVerb(CLI::App& program) : Verb(program, Texts) {}

int StopVerb::Run()
{
    Connection connection(Options());
    const StopWork work(connection);
    return connection.Work();
}

} // namespace Cli
