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
/// Used on the thread that creates it, the application's. The context, and with it every value and request,
/// outlives `Disable()` and `Enable()`; each `Enable()` starts a fresh runner on a fresh thread.
class StateMachine : public QObject
{
    Q_OBJECT

public:
    explicit StateMachine(QObject* parent);
    ~StateMachine() override;

    /// Opens the port and starts stepping; whether the port opened shows as link recovery.
    void Enable();
    /// Ends the step under way, its exchange cut short, and closes the port. Does nothing unless enabled.
    void Disable();

    StateMachineContext* GetContext() const { return _context.get(); }
    Transciever* GetTransciever() const { return _transciever.get(); }
    /// The runner while it steps, on the worker's thread; null otherwise.
    QObject* GetSteppingRunner() const;

private:
    void PrepareNewStateMachine();
    void CreateWorker();
    void ReleaseWorker();

    // In the order in which one needs the other; the worker goes first.
    std::unique_ptr<CRC16> _crc16;
    std::unique_ptr<Transciever> _transciever;
    std::unique_ptr<CommandBuilder> _commandBuilder;
    std::unique_ptr<ResponseParser> _responseParser;
    std::unique_ptr<StateMachineContext> _context;
    std::unique_ptr<QThread> _workerThread;
    StateMachineRunner* _runner = nullptr; ///< Deletes itself when its thread finishes.
};

} // namespace Vesmar
