#pragma once

#include <chrono>
#include <functional>
#include <vector>

#include <QByteArray>

#include "storm/random.h"

using Nanoseconds = std::chrono::nanoseconds;

/// Bytes that the instrument sends, and when.
struct Chunk {
    Nanoseconds due;
    QByteArray bytes;
};

/// The instrument as the storm plays it: faultless, and it knows when its output is on. It shares no code
/// with the library nor with the simulator.
class Instrument
{
public:
    explicit Instrument(Random& random) : _random(random) {}

    /// What it answers to a request, and what it sends by itself afterwards. Nothing while it restarts.
    std::vector<Chunk> Answer(const QByteArray& request, Nanoseconds now);
    /// Lets what its function does by itself happen up to now.
    void Advance(Nanoseconds now);

    bool IsOutputOn() const { return _isOutputOn; }
    /// When the output was last switched on or off.
    Nanoseconds OutputChanged() const { return _outputChanged; }
    bool IsFunctionActive() const { return _function != 0; }
    bool IsPrepared() const { return _state == Prepared; }
    /// It was started, and still reports itself as prepared.
    bool IsStartHidden(Nanoseconds now) const { return _isOutputOn && now < _startHiddenUntil; }
    /// What it was prepared with.
    const QByteArray& Payload() const { return _payload; }
    int Mode() const { return _mode; }

private:
    enum FunctionState {
        Idle = 0,
        Preparing = 1,
        Completed = 2,
        PrepareError = 3,
        Prepared = 4,
        Starting = 5,
        Running = 7,
        Stopping = 8,
        Terminated = 9
    };

    bool IsRcd() const;
    bool IsSingle() const;
    void SwitchOutput(bool isOn, Nanoseconds now);
    void EnterState(FunctionState state, Nanoseconds until);
    void EndState(Nanoseconds now);
    void ContinueRunning(Nanoseconds now);
    QByteArray Status(Nanoseconds now) const;
    QByteArray Readings();
    QByteArray Prepare(const QByteArray& payload, Nanoseconds now);
    QByteArray Start(Nanoseconds now);
    QByteArray Stop(Nanoseconds now);
    QByteArray ChangeMode(int mode, Nanoseconds now);
    QByteArray AnswerTo(const QByteArray& request, Nanoseconds now);
    std::vector<Chunk> RcdFrames(Nanoseconds now);
    Nanoseconds Soon(int mostMs);

    Random& _random;
    int _mode = 0;
    int _function = 0;
    FunctionState _state = Idle;
    QByteArray _payload;
    bool _hasNewMeasurement = false;
    int _objectCheck = 0;
    bool _isOutputOn = false;
    Nanoseconds _outputChanged{0};
    Nanoseconds _stateEnds = Nanoseconds::max();
    Nanoseconds _startHiddenUntil{0};
    Nanoseconds _restartsUntil{0};
};
