#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <mutex>
#include <thread>

#include <QByteArray>

/// An instrument on a pseudo-terminal that answers every request after the same delay. It measures from a
/// start to a stop, and knows when each request has come.
class Peer
{
public:
    using Clock = std::chrono::steady_clock;
    using Observer = std::function<void(char code)>;

    explicit Peer(std::chrono::microseconds delay);
    ~Peer();
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    QByteArray DevicePath() const;
    /// From now on a measurement gives readings, with every status a new one.
    void GiveReadings();
    /// The observer is called when a request has come, before it is answered, on the thread of the peer.
    void Observe(Observer observer);
    /// How many requests with this code have come.
    int Count(char code) const;
    /// When the last of them has come.
    Clock::time_point Arrival(char code) const;
    /// When the last readings have gone.
    Clock::time_point ReadingsSent() const;

private:
    void Run();
    /// Returns the code of the next request, 0 at the end.
    char Receive();
    void Record(char code);
    QByteArray AnswerTo(char code);
    QByteArray Status() const;

    const std::chrono::microseconds _delay;
    int _master;
    int _slave;                ///< Keeps the line up while nobody else has it open.
    mutable std::mutex _mutex; ///< Guards the next five.
    Observer _observer;
    std::array<int, 128> _counts{};
    std::array<Clock::time_point, 128> _arrivals;
    Clock::time_point _readingsSent;
    bool _hasReadings = false;
    int _function = 0;
    int _state = 0;
    int _mode = 0;
    std::thread _thread;
};
