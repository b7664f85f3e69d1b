#include "simulator/session.h"

#include <QTimer>

namespace Simulator
{

Session::Session(const CommandLine& commandLine, const QString& linkPath)
    : _instrument(commandLine.instrument), _link(linkPath, _instrument.DevicePath())
{
    for (const TimedCommand& timed : commandLine.schedule) {
        if (timed.at.count() == 0) {
            Execute(timed.command);
        } else {
            QTimer::singleShot(timed.at, Qt::PreciseTimer, this,
                               [this, command = timed.command] { Execute(command); });
        }
    }
}

void Session::Execute(const ControlCommand& command)
{
    if (command.verb == ControlCommand::Verb::Fault && command.fault == Fault::HangUp) {
        _link.PointTo({}); // before the system gives the path of the old line to another one
    }
    _instrument.Execute(command);
    _link.PointTo(_instrument.DevicePath());
}

} // namespace Simulator
