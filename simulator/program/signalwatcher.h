#pragma once

#include <csignal>

#include <QObject>

#include "simulator/line/descriptor.h"

namespace Simulator
{

/// Turns the signals that end programs, and the end of a child, into Qt signals. From its construction on
/// these signals are blocked in the thread that made it and in every thread started later; make it first.
class SignalWatcher : public QObject
{
    Q_OBJECT

public:
    SignalWatcher();

    /// Returns the signal mask that the program was started with, which its children need.
    const sigset_t& OriginalMask() const;

Q_SIGNALS:
    /// Tells of SIGINT, SIGTERM or SIGHUP. A signal that the terminal sends to its whole foreground has
    /// reached a child too.
    void EndRequested(int signalNumber, bool hasReachedChild);
    void ChildChanged();

private:
    void ReadSignal();

    sigset_t _originalMask{};
    Descriptor _descriptor;
};

} // namespace Simulator
