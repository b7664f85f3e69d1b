#include "machine/statemachine.h"

#include <csignal>

#include "context/responseparser.h"
#include "context/statemachinecontext.h"
#include "link/commandbuilder.h"
#include "link/crc16.h"
#include "link/transciever.h"
#include "machine/statemachinerunner.h"

namespace Vesmar
{

namespace
{

/// Starts a thread with the signals blocked, so that the application's threads receive them, and none cuts a
/// wait of an exchange short. The signals of a thread's own faults stay, for the application's crash handler.
void StartWithoutSignals(QThread& thread)
{
    sigset_t signals{};
    sigset_t previous{};
    sigfillset(&signals);
    for (const int fault : {SIGBUS, SIGFPE, SIGILL, SIGSEGV}) {
        sigdelset(&signals, fault);
    }
    // A thread begins with the mask of the one that starts it.
    pthread_sigmask(SIG_BLOCK, &signals, &previous);
    thread.start(QThread::InheritPriority);
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);
}

} // namespace

StateMachine::StateMachine(QObject* parent)
    : QObject(parent),
      _crc16(std::make_unique<CRC16>(nullptr)),
      _transciever(std::make_unique<Transciever>(_crc16.get(), nullptr)),
      _commandBuilder(std::make_unique<CommandBuilder>(_crc16.get(), nullptr)),
      _responseParser(std::make_unique<ResponseParser>(_crc16.get(), nullptr))
{
    PrepareNewStateMachine();
}

StateMachine::~StateMachine()
{
    if (_runner != nullptr) {
        _transciever->PrepareToClose();
        _runner->Disable();
    }
    ReleaseWorker();
}

/// Creates the context, which lives as long as the machine, and a first worker. That worker is not enabled,
/// so that its thread idles.
void StateMachine::PrepareNewStateMachine()
{
    _context = std::make_unique<StateMachineContext>(_crc16.get(), _transciever.get(), _commandBuilder.get(),
                                                     _responseParser.get(), nullptr);
    CreateWorker();
    StartWithoutSignals(*_workerThread);
}

void StateMachine::Enable()
{
    _context->ResetAllProperty();
    ReleaseWorker();
    _transciever->Open();
    CreateWorker();
    // The runner is enabled before the thread starts: a first step that found it disabled would be the last
    // one.
    _runner->Enable();
    StartWithoutSignals(*_workerThread);
}

void StateMachine::Disable()
{
    if (GetSteppingRunner() == nullptr) {
        return;
    }
    _transciever->PrepareToClose();
    _runner->Disable();
    _transciever->Close();
    ReleaseWorker();
    // A start of the timer that the worker has asked for may still wait in this thread's queue. This stop
    // comes after it.
    QMetaObject::invokeMethod(_context.get(), &StateMachineContext::OnStopMeasurementTimerRequested,
                              Qt::QueuedConnection);
    _context->Replaced.ReleaseHeld();
}

QObject* StateMachine::GetSteppingRunner() const
{
    return _runner != nullptr && _runner->IsEnabled() ? _runner : nullptr;
}

void StateMachine::CreateWorker()
{
    _runner = new StateMachineRunner(_context.get(), nullptr);
    _workerThread = std::make_unique<QThread>();
    _runner->moveToThread(_workerThread.get());
    connect(_workerThread.get(), &QThread::started, _runner, &StateMachineRunner::RunStateMachineWorker);
    connect(_workerThread.get(), &QThread::finished, _runner, &StateMachineRunner::onWorkerFinisched);
}

void StateMachine::ReleaseWorker()
{
    if (_workerThread == nullptr) {
        return;
    }
    _workerThread->quit();
    _workerThread->wait();
    _workerThread.reset();
    _runner = nullptr;
}

} // namespace Vesmar
