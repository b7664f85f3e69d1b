#pragma once

#include <QObject>

namespace Cli
{

/// Turns the signals that end a program into Qt signals: SIGINT, SIGTERM and, unless it was ignored from the
/// start (nohup), SIGHUP.
///
/// From its construction on, these signals are blocked in the thread that made the watcher and in every
/// thread that is started later, so make it before the library starts one. They stay blocked: the watcher is
/// made when the program begins, and lives until it ends.
class SignalWatcher : public QObject
{
    Q_OBJECT

public:
    SignalWatcher();
    ~SignalWatcher() override;

    /// The descriptor is readable while a signal waits.
    int Descriptor() const { return _descriptor; }

    /// Emits `Received` now for the signals that wait. The event loop does that too, where there is one.
    void EmitPending();

Q_SIGNALS:
    void Received(int signalNumber);

private:
    int _descriptor;
};

/// For a program that must end what it has begun: a terminal shall neither halt it nor kill it.
void IgnoreHaltingSignals();

} // namespace Cli
