#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

#include <chrono>

namespace Cli
{

/// Writes without ever waiting: the event loop ends measurements, and a reader that has stopped to read must
/// not hold it up. Bytes that cannot be written at once are kept and written later. An output that has failed
/// counts as lost, and so does one with far too many bytes kept.
class LiveOutput : public QObject
{
    Q_OBJECT

public:
    explicit LiveOutput(int descriptor);

    void Write(const QByteArray& bytes);
    /// Waits up to the limit until all is written. True if all is.
    bool Flush(std::chrono::milliseconds limit);
    /// The error number with which the writing has failed; 0 where it has not, and where the reader is gone.
    int Error() const { return _error; }

Q_SIGNALS:
    /// The output is lost: what is written from now on goes nowhere.
    void Lost();

private:
    void Drain();
    bool WriteSome();
    void Lose();

    int _descriptor;
    QSocketNotifier _writable;
    QByteArray _kept;
    int _error = 0;
    bool _isLost = false;
};

} // namespace Cli
