#pragma once

#include <QObject>

namespace Cli
{

/// Turns the signals that end a program into Qt signals: SIGINT, SIGTERM and, unless it was ignored from the
/// start (nohup), SIGHUP.
///
/// From its construction on they are blocked in the thread that made it and in every thread started later, so
/// make it before the library starts one. They stay blocked: it is made when the program begins and goes when
/// the program ends.
class SignalWatcher : public QObject
{
    Q_OBJECT

public:
    SignalWatcher();
    ~SignalWatcher() override;

    /// Readable while a signal waits to be told.
    int Descriptor() const { return _descriptor; }

    /// Tells the signals that wait, now. The event loop does it too, where there is one.
    void TellPending();

Q_SIGNALS:
    void Received(int signalNumber);

private:
    int _descriptor;
};

/// For a program that must bring to an end what it has begun: a terminal that halts or kills it could not do
/// so.
void IgnoreHaltingSignals();

} // namespace Cli
