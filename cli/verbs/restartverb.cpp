#include "cli/verbs/restartverb.h"

#include <QElapsedTimer>

#include "cli/kit/connection.h"
#include "cli/words/text.h"

namespace Cli
{

namespace
{

using VesmarClient::Job;

constexpr VerbTexts Texts{
    "restart", QT_TRANSLATE_NOOP("Cli::Text", "Restart the instrument into its normal mode"),
    QT_TRANSLATE_NOOP("Cli::Text", "Usage: vesmar restart [OPTIONS]\n"),
    QT_TRANSLATE_NOOP(
        "Cli::Text", "Restarts the instrument, waits until its identity has been read anew and it is in its\n"
                     "normal mode, and says how long that took. It also brings back an instrument that was\n"
                     "left in update mode with its firmware still whole.\n"
                     "\n"
                     "JSON: see docs/events.md; events restart and result.\n"
                     "\n"
                     "Exit status: 0 restarted; 1 bad usage; 2 the link did not come up in time; 3 the\n"
                     "output cannot be written; 4 the instrument does not reach its normal mode in time; 7\n"
                     "the link was lost; 128 and the signal's number where a signal came first.\n"
                     "\n"
                     "Example, without an instrument:\n"
                     "  vesmar-simulator run --restart-time 1500 -- vesmar restart\n")};

class RestartWork : public QObject
{
public:
    RestartWork(Connection& connection, std::chrono::milliseconds confirmTimeout)
        : _connection(connection), _confirmTimeout(confirmTimeout)
    {
        connection.AcceptUpdateMode();
        connect(&connection, &Connection::Up, this, [this] { Begin(); });
        connect(&connection, &Connection::UpdateModeFound, this, [this] { Begin(); });
        connect(&connection, &Connection::Interrupted, this,
                [this](int signalNumber) { _connection.Finish(EndedBySignal(signalNumber)); });
    }

private:
    void Begin()
    {
        const auto* job = _connection.Instrument().restart(static_cast<int>(_confirmTimeout.count()));
        connect(job, &Job::phaseChanged, this, [this](VesmarClient::Phase phase) {
            if (phase == VesmarClient::Phase::Restarting) {
                _time.start();
            }
        });
        connect(job, &Job::finished, this, [this, job](VesmarClient::Outcome outcome) {
            if (outcome == VesmarClient::Outcome::Completed) {
                Show(static_cast<double>(_time.elapsed()) / 1000);
            } else {
                _connection.Fail(*job);
            }
        });
    }

    void Show(double seconds)
    {
        const QString message =
            Text::tr("The instrument has restarted; that took %1 s.").arg(seconds, 0, 'f', 1);
        _connection.Print(_connection.IsJson()
                              ? EventLine(QDateTime::currentDateTime(), QStringLiteral("restart"),
                                          {{QStringLiteral("seconds"), seconds}})
                              : message.toUtf8() + '\n');
        _connection.Finish(DoneWith(message));
    }

    Connection& _connection;
    std::chrono::milliseconds _confirmTimeout;
    QElapsedTimer _time;
};

} // namespace

RestartVerb::RestartVerb(CLI::App& program) : Verb(program, Texts)
{
    AddConfirmTimeout(_confirmTimeout);
}

int RestartVerb::Run()
{
    Connection connection(Options());
    const RestartWork work(connection, _confirmTimeout);
    return connection.Work();
}

} // namespace Cli
