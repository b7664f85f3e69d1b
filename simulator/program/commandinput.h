#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

namespace Simulator
{

/// Reads commands from the standard input, one a line. The end of the input does not end the program.
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
