#include "cli/verbs/infoverb.h"

#include <QTimer>

#include "cli/kit/connection.h"
#include "cli/words/exitstatus.h"
#include "cli/words/info.h"
#include "cli/words/text.h"

namespace Cli
{

namespace
{

constexpr VerbTexts Texts{
    "info", QT_TRANSLATE_NOOP("Cli::Text", "Show the instrument's identity and clocks"),
    QT_TRANSLATE_NOOP("Cli::Text", "Usage: vesmar info [--json] [--timeout TIME] [--trace]\n"),
    QT_TRANSLATE_NOOP(
        "Cli::Text", "Connects, waits until the identity and both clocks have been read, shows them with\n"
                     "the instrument's mode and error, and ends. A function that is active while no program\n"
                     "attends it is told on the error output, and told to stop.\n"
                     "\n"
                     "JSON: see docs/events.md; events unattended, info and result.\n"
                     "\n"
                     "Exit status: 0 shown; 1 bad usage; 2 the link did not come up in time; 3 the\n"
                     "instrument is in update mode, where its clocks cannot be read, or the output cannot\n"
                     "be written; 6 a function that no program attends does not stop.\n"
                     "\n"
                     "Example, without an instrument:\n"
                     "  vesmar-simulator run -- vesmar info --json\n")};

/// Waits until everything has been read, and shows it.
class InfoReader : public QObject
{
public:
    explicit InfoReader(Connection& connection)
        : _connection(connection), _instrument(connection.Instrument())
    {
        _stopLimit.setSingleShot(true);
        connect(&_stopLimit, &QTimer::timeout, this, [this] { FailUnattended(); });
        connect(&connection, &Connection::Up, this, [this] { ShowWithClocks(); });
        connect(&_instrument, &VesmarClient::Instrument::isUnattendedChanged, this,
                [this] { EndAfterStop(); });
        connect(&connection, &Connection::UpdateModeFound, this, [this] { Show(std::nullopt); });
        connect(&connection, &Connection::Interrupted, this,
                [this](int signalNumber) { _connection.Finish(EndedBySignal(signalNumber)); });
    }

private:
    void ShowWithClocks()
    {
        Show(Clocks{_instrument.clock(), _instrument.calibrationDate()});
        if (_instrument.isUnattended()) {
            constexpr std::chrono::seconds TimeToStop{5};
            _stopLimit.start(TimeToStop);
        } else {
            Finish();
        }
    }

    void EndAfterStop()
    {
        if (_stopLimit.isActive() && !_instrument.isUnattended()) {
            Finish();
        }
    }

    void Finish() { _connection.Finish(DoneWith(Text::tr("Everything was read."))); }

    void FailUnattended()
    {
        _connection.Fail(ExitStatus::StopNotConfirmed,
                         {QStringLiteral("unattended"),
                          UnattendedText(_instrument.activeFunction())
                                  .arg(Cli::Show(_instrument.activeFunction()).text,
                                       Cli::Show(_instrument.functionState()).text) +
                              QLatin1Char(' ') + Text::tr("It does not stop; run vesmar stop.")});
    }

    void Show(const std::optional<Clocks>& clocks)
    {
        const Condition condition{clocks, _instrument.mode(), _instrument.error()};
        _connection.Print(_connection.IsJson()
                              ? EventLine(QDateTime::currentDateTime(), QStringLiteral("info"),
                                          InfoFields(_instrument.identity(), condition))
                              : InfoText(_instrument.identity(), condition));
    }

    Connection& _connection;
    VesmarClient::Instrument& _instrument;
    QTimer _stopLimit;
};

} // namespace

InfoVerb::InfoVerb(CLI::App& program) : Verb(program, Texts) {}

int InfoVerb::Run()
{
    Connection connection(Options());
    const InfoReader reader(connection);
    return connection.Work();
}

} // namespace Cli
