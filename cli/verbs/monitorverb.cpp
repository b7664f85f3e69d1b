#include "cli/verbs/monitorverb.h"

#include <QTimer>

#include "cli/kit/connection.h"
#include "cli/words/text.h"
#include "cli/words/values.h"

namespace Cli
{

namespace
{

using VesmarClient::Instrument;
using VesmarClient::LinkState;

constexpr VerbTexts Texts{
    "monitor", QT_TRANSLATE_NOOP("Cli::Text", "Show every change of every property as it happens"),
    QT_TRANSLATE_NOOP("Cli::Text",
                      "Usage: vesmar monitor [--for TIME] [--json] [--timeout TIME] [--trace]\n"),
    QT_TRANSLATE_NOOP(
        "Cli::Text", "Connects, and shows each change with the time at which it was told, until Ctrl-C,\n"
                     "SIGTERM, SIGHUP or the time given. A loss of the link shows as ErrorCode 103 and,\n"
                     "if it lasts, 100, and the program goes on. Whenever the identity has been read, the\n"
                     "mode, the error and the calibration date are shown as they stand, changed or not. An\n"
                     "instrument in update mode is pointed out on the error output.\n"
                     "A function that is active while no program attends it is told there, too, and told to\n"
                     "stop. Readings are in the instrument's own units.\n"
                     "\n"
                     "JSON: see docs/events.md; events unattended, change and result.\n"
                     "\n"
                     "Exit status: 0 ended by a signal or after the time given; 1 bad usage; 2 the link\n"
                     "did not come up in time; 3 the output cannot be written; 128 and the signal's\n"
                     "number where a signal came before the link was up, 141 where the output's reader\n"
                     "went away.\n"
                     "\n"
                     "Example, without an instrument, its plug pulled after 3 s and put back after 25 s:\n"
                     "  vesmar-simulator run --at 3:unplug --at 25:plug -- vesmar monitor --for 40\n")};

class Monitor : public QObject
{
public:
    Monitor(Connection& connection, std::optional<std::chrono::milliseconds> duration)
        : _connection(connection), _instrument(connection.Instrument()), _duration(duration)
    {
        connection.AcceptUpdateMode();
        WatchProperties();
        connect(&_instrument, &Instrument::linkStateChanged, this, [this](LinkState state) {
            if (state == LinkState::Up || state == LinkState::UpdateMode) {
                ShowConnection(state);
            }
        });
        connect(&connection, &Connection::Interrupted, this,
                [this](int signalNumber) { Interrupt(signalNumber); });
        _end.setSingleShot(true);
        _end.setTimerType(Qt::PreciseTimer);
        connect(&_end, &QTimer::timeout, this,
                [this] { _connection.Finish(DoneWith(Text::tr("Monitored for the time given."))); });
    }

private:
    void WatchProperties()
    {
        Watch("TesterMode", &Instrument::modeChanged);
        Watch("CurrentDateTime", &Instrument::clockChanged);
        Watch("StartTestStatus", &Instrument::startTestResultChanged);
        Watch("MeasurementFunctionStatus", &Instrument::functionStateChanged);
        Watch("ErrorCode", &Instrument::errorChanged);
        Watch("TestResults", &Instrument::mainsChanged);
        Watch("CurrentMeasurementType", &Instrument::activeFunctionChanged);
    }

    template <typename Value>
    void Watch(const char* property, void (Instrument::*changed)(Value))
    {
        connect(&_instrument, changed, this,
                [this, property](const auto& value) { Report(property, Show(value)); });
    }

    /// Once the link is up, a signal is the end that is meant.
    void Interrupt(int signalNumber)
    {
        _connection.Finish(_connection.HasBeenUp()
                               ? DoneWith(Text::tr("Monitored until signal %1.").arg(signalNumber))
                               : EndedBySignal(signalNumber));
    }

    void Report(const char* property, const Shown& value)
    {
        const QDateTime now = QDateTime::currentDateTime();
        const QString name = QString::fromLatin1(property);
        _connection.Print(_connection.IsJson()
                              ? EventLine(now, QStringLiteral("change"), ChangeFields(name, value))
                              : ChangeText(now, name, value));
    }

    /// Each time that the link comes up, values that have not changed since are shown as well; a value that
    /// cannot be read is not.
    void ShowConnection(LinkState state)
    {
        Report("DeviceInformation", Show(_instrument.identity()));
        Report("TesterMode", Show(_instrument.mode()));
        Report("ErrorCode", Show(_instrument.error()));
        if (_instrument.calibrationDate().isValid()) {
            Report("CalibrationDateTime", Show(_instrument.calibrationDate()));
        }
        if (state == LinkState::UpdateMode) {
            WriteError(InUpdateMode().message);
        }
        if (_duration && !_end.isActive()) {
            _end.start(*_duration);
        }
    }

    Connection& _connection;
    Instrument& _instrument;
    std::optional<std::chrono::milliseconds> _duration;
    QTimer _end;
};

} // namespace

MonitorVerb::MonitorVerb(CLI::App& program) : Verb(program, Texts)
{
    constexpr double Least = 0;
    AddSeconds(
        "--for",
        QT_TRANSLATE_NOOP("Cli::Text", "End after so long, counted from the moment that the link is up"),
        Least, _duration);
}

int MonitorVerb::Run()
{
    Connection connection(Options());
    const Monitor monitor(connection, _duration);
    return connection.Work();
}

} // namespace Cli
