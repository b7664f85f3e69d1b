#include "cli/verbs/monitorverb.h"

#include <QTimer>

#include "cli/kit/link.h"
#include "cli/words/format.h"

namespace Cli
{

namespace
{

using Vesmar::Tester;

constexpr VerbTexts Texts{
    "monitor", "Show every change of every property as it happens",
    "Usage: vesmar monitor [--for SECONDS] [--json] [--timeout SECONDS] [--trace]\n",
    "Connects, and shows each change with the time at which it was told, until Ctrl-C,\n"
    "SIGTERM, SIGHUP or the time given. A loss of the link shows as ErrorCode 103 and,\n"
    "if it lasts, 100, and the program goes on. Whenever the identity has been read, the\n"
    "mode, the error and the calibration date are shown as they stand, changed or not. An\n"
    "instrument in update mode is pointed out on the error output.\n"
    "Readings are in the instrument's own units.\n"
    "\n"
    "JSON: see docs/events.md; events change and result.\n"
    "\n"
    "Exit status: 0 ended by a signal or after the time given; 1 bad usage; 2 the link\n"
    "did not come up in time; 3 the output cannot be written; 128 and the signal's\n"
    "number where a signal came before the link was up, 141 where the output's reader\n"
    "went away.\n"
    "\n"
    "Example, without an instrument, its plug pulled after 3 s and put back after 25 s:\n"
    "  vesmar-simulator run --at 3:unplug --at 25:plug -- vesmar monitor --for 40\n"};

class Monitor : public QObject
{
public:
    Monitor(Link& link, std::optional<std::chrono::milliseconds> duration) : _link(link), _duration(duration)
    {
        WatchProperties();
        connect(&link.Instrument(), &Tester::DeviceInformationChanged, this, [this] { ShowConnection(); });
        connect(&link.Instrument(), &Tester::TesterModeChanged, this, [](Vesmar::OperationMode mode) {
            if (mode == Vesmar::OperationMode::Update) {
                WriteError(InUpdateMode().message);
            }
        });
        connect(&link, &Link::Interrupted, this, [this](int signalNumber) { Interrupt(signalNumber); });
        _end.setSingleShot(true);
        _end.setTimerType(Qt::PreciseTimer);
        connect(&_end, &QTimer::timeout, this,
                [this] { _link.Finish(DoneWith(QStringLiteral("Monitored for the time given."))); });
    }

private:
    void WatchProperties()
    {
        Watch("DeviceInformation", &Tester::DeviceInformationChanged);
        Watch("TesterMode", &Tester::TesterModeChanged);
        Watch("CurrentDateTime", &Tester::CurrentDateTimeChanged);
        Watch("CalibrationDateTime", &Tester::CalibrationDateTimeChanged);
        Watch("StartTestStatus", &Tester::StartTestStatusChanged);
        Watch("MeasurementFunctionStatus", &Tester::MeasurementFunctionStatusChanged);
        Watch("ErrorCode", &Tester::ErrorCodeChanged);
        Watch("TestSettings", &Tester::TestSettingsChanged);
        Watch("TestResults", &Tester::TestResultsChanged);
        Watch("IsMeasurementRunning", &Tester::IsMeasurementRunningChanged);
        Watch("MeasurementStatus", &Tester::MeasurementStatusChanged);
        Watch("MeasurementTime", &Tester::MeasurementTimeChanged);
        Watch("OperationProgress", &Tester::OperationProgressChanged);
        Watch("CurrentMeasurementType", &Tester::CurrentMeasurementTypeChanged);
        Watch("OperationStatus", &Tester::OperationStatusChanged);
    }

    template <typename Value>
    void Watch(const char* property, void (Tester::*changed)(Value))
    {
        connect(&_link.Instrument(), changed, this,
                [this, property](const Value& value) { Report(property, Show(value)); });
    }

    /// Once the link is up, a signal is the end that is meant.
    void Interrupt(int signalNumber)
    {
        if (_link.IsUp()) {
            _link.Finish(DoneWith(QStringLiteral("Monitored until signal %1.").arg(signalNumber)));
        } else {
            _link.Finish(EndedBySignal(signalNumber));
        }
    }

    void Report(const char* property, const Shown& value)
    {
        const QDateTime now = QDateTime::currentDateTime();
        const QString name = QString::fromLatin1(property);
        _link.Print(_link.IsJson() ? EventLine(now, QStringLiteral("change"), ChangeFields(name, value))
                                   : ChangeText(now, name, value));
    }

    /// The identity is read each time that the link comes up. Values that have not changed since are shown as
    /// well; a value that has never been read is not.
    void ShowConnection()
    {
        const Tester& tester = _link.Instrument();
        Report("TesterMode", Show(tester.TesterMode()));
        Report("ErrorCode", Show(tester.ErrorCode()));
        if (const QDateTime calibration = tester.CalibrationDateTime(); calibration.isValid()) {
            Report("CalibrationDateTime", Show(calibration));
        }
        if (!_link.IsUp()) {
            _link.ConfirmUp();
            if (_duration) {
                _end.start(*_duration);
            }
        }
    }

    Link& _link;
    std::optional<std::chrono::milliseconds> _duration;
    QTimer _end;
};

} // namespace

MonitorVerb::MonitorVerb(CLI::App& program) : Verb(program, Texts)
{
    constexpr double Least = 0;
    AddSeconds("--for", "End after so long, counted from the moment that the link is up", Least, _duration);
}

int MonitorVerb::Run()
{
    Link link(Options());
    const Monitor monitor(link, _duration);
    return link.Work();
}

} // namespace Cli
