#include "simulator/program/session.h"

#include <iostream>

#include <QCoreApplication>
#include <QTimer>

#include "simulator/faults/faultfile.h"

namespace Simulator
{

namespace
{

const char OnlyFaults[] =
    "while a recording is played only faults can be commanded; leave other commands out";

}

Session::Session(const CommandLine& commandLine, const QString& linkPath)
    : _playsRecording(!commandLine.instrument.recording.empty()), _instrument(commandLine.instrument)
{
    _link.emplace(linkPath, _instrument.DevicePath());
    _instrument.SetLineListener([this](const QString& devicePath) { UpdateLink(devicePath); });
    for (const TimedCommand& timed : commandLine.schedule) {
        if (timed.at.count() == 0) {
            Execute(timed.command);
        } else {
            QTimer::singleShot(timed.at, Qt::PreciseTimer, this,
                               [this, command = timed.command] { Execute(command); });
        }
    }
    AddFaults(commandLine.faults);
}

void Session::Execute(const ControlCommand& command)
{
    if (IsInVain(command)) {
        std::cerr << "vesmar-simulator: " << OnlyFaults << '\n';
        return;
    }
    _instrument.Execute(command);
}

void Session::Inject(const QByteArray& json)
{
    AddFaults({ParseFault(json)});
}

void Session::AddFaults(const std::vector<FaultEntry>& faults)
{
    for (const FaultEntry& fault : faults) {
        if (fault.command && IsInVain(*fault.command)) {
            throw std::runtime_error(OnlyFaults);
        }
    }
    if (!_instrument.AddFaults(faults)) {
        throw std::runtime_error(QStringLiteral("there are %1 faults already; \"faults clear\" makes room")
                                     .arg(FaultPlan::MostFaults)
                                     .toStdString());
    }
}

/// A recording has no mode, no error and no function; only faults have something to act on.
bool Session::IsInVain(const ControlCommand& command) const
{
    return _playsRecording && command.verb != ControlCommand::Verb::Fault;
}

/// This runs on the instrument's thread, where nothing would catch an exception.
void Session::UpdateLink(const QString& devicePath)
{
    try {
        _link->PointTo(devicePath);
    } catch (const std::exception& error) {
        std::cerr << "vesmar-simulator: " << error.what() << '\n';
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [] { QCoreApplication::exit(1); }, Qt::QueuedConnection);
    }
}

} // namespace Simulator
