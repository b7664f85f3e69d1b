#pragma once

#include <chrono>
#include <thread>

#include <QByteArray>

/// An instrument on a pseudo-terminal that answers every status request with the same status, after a delay.
class DelayedPeer
{
public:
    explicit DelayedPeer(std::chrono::microseconds delay);
    ~DelayedPeer();

    QByteArray DevicePath() const;

private:
    void Serve() const;

    std::chrono::microseconds _delay;
    int _master;
    int _slave; ///< Keeps the line up while nobody else has it open.
    std::thread _server;
};
