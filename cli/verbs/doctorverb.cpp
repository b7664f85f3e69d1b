#include "cli/verbs/doctorverb.h"

#include <QElapsedTimer>

#include <unistd.h>

#include "cli/doctor/doctorformat.h"
#include "cli/doctor/doctorverdict.h"
#include "cli/doctor/lineprobe.h"
#include "cli/doctor/linerecord.h"
#include "cli/output/event.h"
#include "cli/output/output.h"
#include "cli/words/text.h"
#include "client/line/device.h"
#include "client/line/deviceholders.h"

namespace Cli
{

namespace
{

constexpr VerbTexts Texts{
    "doctor", QT_TRANSLATE_NOOP("Cli::Text", "Find out what is wrong with the link"),
    QT_TRANSLATE_NOOP("Cli::Text", "Usage: vesmar doctor [--json]\n"),
    QT_TRANSLATE_NOOP("Cli::Text",
                      "Looks at the serial device, who may use it and who holds it, asks the instrument for\n"
                      "its status 50 times, shows how it answered and how long that took, and says what is\n"
                      "wrong and what to do. Where another program holds the device, nothing is sent.\n"
                      "\n"
                      "JSON: see docs/events.md; events device, permissions, holders, answers, condition,\n"
                      "and result.\n"
                      "\n"
                      "Exit status: 0 link and instrument are sound; 1 bad usage; 2 no link; 3 the link is\n"
                      "sound, but the instrument is in update mode or in another one that is not its normal\n"
                      "mode, or the output cannot be written; 4 the link is unreliable or too slow, or the\n"
                      "instrument reports an error; 6 a function is active that no program attends.\n"
                      "\n"
                      "Example, without an instrument:\n"
                      "  vesmar-simulator run -- vesmar doctor\n")};

constexpr int Requests = 50;

/// Examines one thing after another, and shows each.
class Examination
{
public:
    explicit Examination(bool isJson) : _isJson(isJson), _device(DevicePath().toLatin1().constData()) {}

    int Run()
    {
        ExamineDevice();
        const std::optional<Ending> obstacle = FindObstacle(_device.Findings(), _holders);
        if (!IsHeard()) {
            return PrintingStatus(_output, _outputResult);
        }
        return Conclude(obstacle ? *obstacle : AskInstrument());
    }

private:
    void ExamineDevice()
    {
        const DeviceFindings& device = _device.Findings();
        Show("device", DeviceText(device), DeviceJson(device));
        if (device.IsThere()) {
            Show("permissions", PermissionsText(device), PermissionsJson(device));
        }
        if (device.IsCharacterDevice() &&
            !device.IsNoTerminal()) { // Dozens of programs hold a device such as /dev/null.
            _holders = VesmarClient::FindHolders(device.identity);
            Show("holders", HoldersText(_holders), HoldersJson(_holders));
        }
    }

    Ending AskInstrument()
    {
        if (!_isJson) {
            Write(Text::tr("Asking for the status. This takes a second, and minutes where answers are late.")
                      .toUtf8() +
                  '\n');
        }
        LineProbe probe(_device.Descriptor());
        LineRecord line;
        probe.OnLateAnswer([this, &line] { SayWhatIsAwaited(line); });
        _asking.start();
        for (int request = 0; request < Requests && !line.IsHopeless(); ++request) {
            if (_asking.hasExpired(LineProbe::PatienceOfPeople.count())) {
                SayWhatIsAwaited(line);
            }
            line.Add(probe.AskForStatus());
        }
        Show("answers", AnswersText(line), AnswersJson(line));
        if (line.Status()) {
            Show("condition", ConditionText(*line.Status()), ConditionJson(*line.Status()));
        }
        return DecideEnding(line);
    }

    /// Once, to somebody who waits.
    void SayWhatIsAwaited(const LineRecord& line)
    {
        if (!_isWaitTold) {
            _isWaitTold = true;
            SayToTerminal(Text::tr("Waiting for the answer to request %1 of %2. Ctrl-C ends it.")
                              .arg(line.Asked() + 1)
                              .arg(Requests));
        }
    }

    int Conclude(const Ending& ending)
    {
        Write(_isJson ? ResultLine(QDateTime::currentDateTime(), ending)
                      : '\n' + ending.message.toUtf8() + '\n');
        return IsHeard() ? ending.status : PrintingStatus(_output, _outputResult);
    }

    void Show(const char* event, const QByteArray& text, const QJsonObject& json)
    {
        Write(_isJson ? EventLine(QDateTime::currentDateTime(), QString::fromLatin1(event), json) : text);
    }

    void Write(const QByteArray& lines) { _outputResult = _output.Write(lines); }

    bool IsHeard() const { return _outputResult == Output::Result::Written; }

    static constexpr int Nothing = -1;

    bool _isJson;
    VesmarClient::Device _device;
    DeviceHolders _holders;
    QElapsedTimer _asking;
    bool _isWaitTold = false;
    Output _output{STDOUT_FILENO, Nothing};
    Output::Result _outputResult = Output::Result::Written;
};

} // namespace

DoctorVerb::DoctorVerb(CLI::App& program) : Verb(program, Texts, Reach::ProgramOnly) {}

int DoctorVerb::Run()
{
    return Examination(Options().isJson).Run();
}

} // namespace Cli
