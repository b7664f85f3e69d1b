#pragma once

#include <optional>

#include <QObject>

#include "simulator/line/instrument.h"
#include "simulator/program/commandline.h"
#include "simulator/program/devicelink.h"

namespace Simulator
{

/// An instrument that can be reached by a link, and the commands that are planned for it.
class Session : public QObject
{
    Q_OBJECT

public:
    /// Throws std::exception when the instrument or the link cannot be created.
    Session(const CommandLine& commandLine, const QString& linkPath);

    /// Reports a command that has nothing to act on to the standard error.
    void Execute(const ControlCommand& command);

    /// Adds one fault, written as in a file of faults. Throws std::runtime_error, which tells the reason,
    /// when it cannot.
    void Inject(const QByteArray& json);

    /// Ends the faults of the file and those that were injected.
    void ClearFaults() { _instrument.ClearFaults(); }

private:
    void AddFaults(const std::vector<FaultEntry>& faults);
    bool IsInVain(const ControlCommand& command) const;
    void UpdateLink(const QString& devicePath);

    std::optional<DeviceLink>
        _link; ///< outlives the instrument, which reports changes of its line until its end
    bool _playsRecording;
    Instrument _instrument;
};

} // namespace Simulator
