#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

namespace Simulator
{

/// Reads commands from standard input, one a line. Its end ends nothing.
class CommandInput : public QObject
{
    Q_OBJECT

public:
    CommandInput();

Q_SIGNALS:
    void LineRead(const QString& line);

private:
    void ReadInput();
    void Receive(char byte);

    QSocketNotifier _notifier;
    QByteArray _unfinished;
};

} // namespace Simulator
