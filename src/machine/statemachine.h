#pragma once

#include <memory>

#include <QObject>
#include <QThread>

namespace Vesmar
{

class CRC16;
class CommandBuilder;
class ResponseParser;
class StateMachineContext;
class StateMachineRunner;
class Transciever;

/// Owns the engine: the link's components, the context, the runner and the thread that the runner steps on.
///
/// Every call comes from the thread that creates the machine, the application's. The context, and with it
/// every value and request, outlives `Disable()` and `Enable()`; each `Enable()` starts a new runner on a new
/// thread.
class StateMachine : public QObject
{
    Q_OBJECT

public:
    explicit StateMachine(QObject* parent);
    ~StateMachine() override;

    /// Opens the port and starts to step. A port that does not open makes the machine recover the link.
    void Enable();
    /// Cuts the exchange that is under way short, waits for the end of its step, and closes the port. Does
    /// nothing when the machine is disabled.
    void Disable();

    StateMachineContext* GetContext() const { return _context.get(); }
    Transciever* GetTransciever() const { return _transciever.get(); }
    /// The runner, which lives on the worker's thread, while the machine is enabled; null otherwise.
    QObject* GetSteppingRunner() const;

private:
    void PrepareNewStateMachine();
    void CreateWorker();
    void ReleaseWorker();

    // Each member may use those above it. The destructor ends the worker before any of them is destroyed.
    std::unique_ptr<CRC16> _crc16;
    std::unique_ptr<Transciever> _transciever;
    std::unique_ptr<CommandBuilder> _commandBuilder;
    std::unique_ptr<ResponseParser> _responseParser;
    std::unique_ptr<StateMachineContext> _context;
    std::unique_ptr<QThread> _workerThread;
    StateMachineRunner* _runner = nullptr; ///< It deletes itself when its thread finishes.
};

} // namespace Vesmar
