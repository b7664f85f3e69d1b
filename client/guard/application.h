#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <sys/types.h>

#include <memory>

namespace VesmarClient
{

/// The application that a guard has been started by, at the other end of the guard's channel.
class Application : public QObject
{
    Q_OBJECT

public:
    Application();
    ~Application() override;

    pid_t Process() const { return _process; }
    QString Program() const { return _program; }
    /// Whether its process has ended. What it had open has been closed then, unless others have it open, too.
    bool HasEnded() const;

Q_SIGNALS:
    /// The application has closed the channel, or its process has ended, in the middle of a measurement.
    void Lost();
    /// The same while nothing is measured.
    void Left();

private:
    void Receive();
    bool ReadMessages();
    void End();

    pid_t _process;
    QString _program;
    int _handle; ///< Readable once the process has ended; negative where the system has no such thing.
    QSocketNotifier _channel;
    std::unique_ptr<QSocketNotifier> _end;
    bool _isMeasuring = false;
};

} // namespace VesmarClient
