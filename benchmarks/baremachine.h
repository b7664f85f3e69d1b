#pragma once

#include <atomic>

#include <QObject>
#include <QThread>

#include "barelink.h"

/// Steps as the driver does, on a thread with a queue of Qt, with the waits that are prescribed and nothing
/// else: a status, 100 ms of pause. A step that finds an abort requested leads to one that stops the
/// function.
class BareMachine : public QObject
{
public:
    explicit BareMachine(const QByteArray& devicePath);
    ~BareMachine() override;

    void Abort() { _isAbortRequested = true; }

private:
    void PostStep();
    void Step();

    BareLink _link;
    std::atomic<bool> _isAbortRequested{false};
    bool _isStopping = false;
    QThread _thread;
};
