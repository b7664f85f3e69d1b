#include "baremachine.h"

#include "stepmarks.h"
#include "support/wire.h"

BareMachine::BareMachine(const QByteArray& devicePath) : _link(devicePath)
{
    moveToThread(&_thread);
    _thread.start();
    PostStep();
}

BareMachine::~BareMachine()
{
    _thread.quit();
    _thread.wait();
}

void BareMachine::PostStep()
{
    QMetaObject::invokeMethod(
        this, [this] { Step(); }, Qt::QueuedConnection);
}

void BareMachine::Step()
{
    constexpr unsigned long PauseMs = 100;
    StepMarks::MarkAsBare();
    _link.Exchange(Wire::ReadStatus);
    if (_isStopping) {
        _link.Exchange(Wire::StopMeasurement);
    }
    _isStopping = _isAbortRequested.exchange(false);
    QThread::msleep(PauseMs);
    PostStep();
}
