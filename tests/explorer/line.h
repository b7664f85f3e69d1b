#pragma once

#include <QByteArray>

/// The serial line inside of the program: the explorer defines the functions of the C library that the driver
/// calls, so that a request is answered within its `write`. Time is a number that every sleep raises; nobody
/// waits.
namespace Line
{

/// Whoever is at the other end.
class Peer
{
public:
    virtual ~Peer() = default;

    /// Returns the answer to a request; nothing for silence.
    virtual QByteArray Answer(const QByteArray& request) = 0;
    /// Called when the driver first sleeps after it has written a request. Until then it holds its port, and
    /// whoever wants to close that would wait for ever.
    virtual void Released() = 0;
    /// Returns what is sent without a request, to a driver that waits for it; nothing for silence.
    virtual QByteArray Speak() = 0;
};

void Connect(Peer* peer);
/// Forgets what the step before left on the line.
void BeginStep();

} // namespace Line
