#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include "simulator/control/controlcommand.h"
#include "simulator/line/descriptor.h"
#include "simulator/line/lineserver.h"

namespace Simulator
{

/// A simulated instrument at a pseudo-terminal, served by a thread of its own from construction to
/// destruction. Every operation may be called from any thread. The simulator needs few of the operations; the
/// others are for tests that hold an instrument in their own process.
class Instrument
{
public:
    /// Throws std::exception when there is no pseudo-terminal or a file cannot be written.
    explicit Instrument(const InstrumentOptions& options = {});
    ~Instrument();
    Instrument(const Instrument&) = delete;
    Instrument(Instrument&&) = delete;
    Instrument& operator=(const Instrument&) = delete;
    Instrument& operator=(Instrument&&) = delete;

    /// What programs open; empty while the line is hung up. A line that comes back is a new one, with a new
    /// path.
    QString DevicePath() const;

    /// The serving thread calls the listener whenever the line is about to break, with an empty path, and
    /// when there is a new line, with its path. The listener must call no operation of the instrument.
    void SetLineListener(std::function<void(const QString& devicePath)> listener);

    /// Has the serving thread carry out a command, and returns when that is done. While a recording is
    /// played, the line shows nothing of a command that is no fault.
    void Execute(const ControlCommand& command);

    // The commands as functions.
    void SetMode(int mode) { Execute({ControlCommand::Verb::Mode, mode}); }
    void SetError(int error) { Execute({ControlCommand::Verb::Error, error}); }
    void SetFunction(int function) { Execute({ControlCommand::Verb::Function, function}); }
    void SetScenario(Scenario scenario, int number = 1);
    void SetFault(Fault fault, std::chrono::milliseconds slowAnswer = DefaultSlowAnswer);
    void Unplug() { SetFault(Fault::Silent); }
    void Plug() { SetFault(Fault::None); }

    /// Faults that wait for their triggers, besides the one that was set by its name. Their times and
    /// requests are counted from now on. False, and nothing is changed, when there would be more than
    /// `FaultPlan::MostFaults`.
    bool AddFaults(const std::vector<FaultEntry>& faults);
    void ClearFaults();

    void SetAnswerAfter(std::chrono::microseconds delay);

    /// The exact bytes that answer the next request, whatever it is; an empty array means silence. Calls
    /// queue up.
    void AnswerNextWith(const QByteArray& raw);

    /// Puts bytes on the line that nobody asked for.
    void Send(const QByteArray& raw);

    /// The exchanges that are over, those without an answer included.
    std::vector<Exchange> Exchanges() const;

    /// Forgets the exchanges so far.
    void ClearRequests();

    /// What the instrument's own clock shows.
    QDateTime Date() const;
    QDateTime CalibrationDate() const;

    /// What its status would report now.
    StatusWord Status();

    /// The image of the last update that was confirmed; empty before the first.
    QByteArray Firmware() const;

private:
    void Run();
    void ExecuteCommands();
    void Wake();

    mutable std::mutex _mutex; ///< guards everything below up to the thread
    LineServer _server;
    std::deque<ControlCommand> _commands; ///< those that the serving thread has not carried out yet
    std::condition_variable _areCommandsExecuted;
    bool _isStopping = false;
    Descriptor _wake; ///< tells the serving thread to look again
    std::thread _thread;
};

} // namespace Simulator
