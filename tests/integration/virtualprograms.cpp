// `vesmar-simulator run -- vesmar` as one program in virtual time, made of the sources of both: neither a
// long wait nor a busy machine changes anything. Whatever else it is asked for, the simulator itself does, in
// real time.

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <exception>
#include <iostream>
#include <thread>

#include <QFile>
#include <QFileInfo>

#include "simulator/faults/faultfile.h"
#include "simulator/line/recordingfile.h"
#include "simulator/program/commandline.h"
#include "support/serialdevice.h"

/// The `main` of vesmar.
int VesmarMain(int argc, char** argv);

namespace
{

using Simulator::CommandLine;
using Simulator::Instrument;
using Simulator::TimedCommand;

bool IsRunOfVesmar(const CommandLine& commandLine)
{
    return !commandLine.program.empty() &&
           QFileInfo(QString::fromStdString(commandLine.program.front())).fileName() ==
               QLatin1String("vesmar");
}

void LoadFiles(CommandLine& commandLine)
{
    if (!commandLine.faultsPath.isEmpty()) {
        commandLine.faults = Simulator::LoadFaults(commandLine.faultsPath);
    }
    if (!commandLine.playbackPath.isEmpty()) {
        commandLine.instrument.recording = Simulator::LoadRecording(commandLine.playbackPath);
    }
}

/// Has the instrument carry out what is due at once, and the rest in threads of their own.
std::vector<std::thread> BeginSchedule(const std::vector<TimedCommand>& schedule, Instrument& instrument)
{
    std::vector<std::thread> threads;
    for (const TimedCommand& timed : schedule) {
        if (timed.at.count() == 0) {
            instrument.Execute(timed.command);
        } else {
            threads.emplace_back([&] {
                std::this_thread::sleep_for(timed.at);
                instrument.Execute(timed.command);
            });
        }
    }
    return threads;
}

/// Sends this program the signal that the environment names, such as "2 function 10 running", once the
/// instrument's log has the line behind its number.
class Interruption
{
public:
    explicit Interruption(const QString& logPath) : _log(logPath)
    {
        if (!_wanted.isEmpty()) {
            _thread = std::thread([this] { AwaitMoment(); });
        }
    }
    ~Interruption()
    {
        _isOver = true;
        if (_thread.joinable()) {
            _thread.join();
        }
    }
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

private:
    void AwaitMoment()
    {
        constexpr std::chrono::milliseconds BetweenLooks{10};
        const int blank = _wanted.indexOf(' ');
        _log.open(QIODevice::ReadOnly);
        for (QByteArray text; !_isOver; text += _log.readAll()) {
            if (text.contains(_wanted.mid(blank) + '\n')) {
                ::kill(::getpid(), _wanted.left(blank).toInt());
                return;
            }
            std::this_thread::sleep_for(BetweenLooks);
        }
    }

    const QByteArray _wanted = qgetenv("VESMAR_TEST_INTERRUPTION");
    QFile _log;
    std::atomic<bool> _isOver{false};
    std::thread _thread;
};

int RunVesmar(std::vector<std::string>& program)
{
    std::vector<char*> arguments;
    for (std::string& argument : program) {
        arguments.push_back(argument.data());
    }
    arguments.push_back(nullptr);
    return VesmarMain(static_cast<int>(program.size()), arguments.data());
}

int Run(CommandLine& commandLine)
{
    LoadFiles(commandLine);
    // Signals are for vesmar, and for none of the threads that begin here.
    sigset_t all;
    sigset_t before;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before);
    Instrument instrument(commandLine.instrument);
    const auto attach = [](const QString& path) { RedirectSerialDevice(QFile::encodeName(path)); };
    attach(instrument.DevicePath());
    instrument.SetLineListener(attach);
    std::vector<std::thread> threads = BeginSchedule(commandLine.schedule, instrument);
    instrument.AddFaults(commandLine.faults);
    const Interruption interruption(commandLine.instrument.logPath);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    const int status = RunVesmar(commandLine.program);
    for (std::thread& thread : threads) {
        thread.join();
    }
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    int status = 0;
    auto commandLine = Simulator::ParseCommandLine(argc, argv, &status);
    if (!commandLine) {
        return status;
    }
    if (!IsRunOfVesmar(*commandLine)) {
        ::execv(SIMULATOR_PROGRAM, argv);
        return 1;
    }
    try {
        return Run(*commandLine);
    } catch (const std::exception& error) {
        std::cerr << "vesmar-simulator: " << error.what() << '\n';
        return 1;
    }
}
