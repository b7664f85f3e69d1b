#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

#include <chrono>

namespace Cli
{

/// Writes without ever waiting: the event loop ends measurements, and nobody who has stopped to read may hold
/// it up. What cannot be written at once is kept and written later. An output with far too much kept counts
/// as lost, as one that has failed does.
class LiveOutput : public QObject
{
    Q_OBJECT

public:
    explicit LiveOutput(int descriptor);

    void Write(const QByteArray& bytes);
    /// Waits, but not for long, until all is written. True if it is.
    bool Flush(std::chrono::milliseconds limit);

    bool IsLost() const { return _isLost; }

Q_SIGNALS:
    /// What is written from now on goes nowhere.
    void Lost();

private:
    void Drain();
    bool WriteSome();
    void Lose();

    int _descriptor;
    QSocketNotifier _writable;
    QByteArray _kept;
    bool _isLost = false;
};

} // namespace Cli
