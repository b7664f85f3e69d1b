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

Q_SIGNALS:
    void Received(int signalNumber);

private:
    void ReadSignal();

    int _descriptor;
};

} // namespace Cli
