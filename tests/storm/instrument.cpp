#include "storm/instrument.h"

#include "support/wire.h"

namespace
{

using std::chrono::milliseconds;

constexpr int Rln = 1;
constexpr int Rcd = 10;
constexpr int RcdIec = 11;
constexpr int CleanUp = 3;
constexpr int PayloadSize = 8;
constexpr int FunctionOffset = 0;
constexpr int RcdOptionsOffset = 2;
constexpr int PassedStartTest = 14;
constexpr int UpdateMode = 3;

QByteArray Code(int code)
{
    return WithChecksum(QByteArray(1, static_cast<char>(code)));
}

} // namespace

bool Instrument::IsRcd() const
{
    return _function == Rcd || _function == RcdIec;
}

bool Instrument::IsSingle() const
{
    return _function == Rln;
}

Nanoseconds Instrument::Soon(int mostMs)
{
    return milliseconds(_random.Between(1, mostMs));
}

void Instrument::SwitchOutput(bool isOn, Nanoseconds now)
{
    if (_isOutputOn != isOn) {
        _isOutputOn = isOn;
        _outputChanged = now;
    }
}

void Instrument::EnterState(FunctionState state, Nanoseconds until)
{
    _state = state;
    _stateEnds = until;
}

void Instrument::Advance(Nanoseconds now)
{
    while (_stateEnds <= now) {
        EndState(_stateEnds);
    }
}

/// What a function does by itself when its present state has lasted long enough.
void Instrument::EndState(Nanoseconds now)
{
    switch (_state) {
    case Preparing:
        EnterState(_random.IsOneIn(20) ? PrepareError : Prepared, Nanoseconds::max());
        _hasNewMeasurement = _state == PrepareError;
        _objectCheck = _random.IsOneIn(2) ? 0 : _random.Between(1, 11);
        break;
    case Starting:
        EnterState(Running, now + Soon(700));
        break;
    case Running:
        ContinueRunning(now);
        break;
    case Stopping:
        EnterState(_random.IsOneIn(2) ? Completed : Idle, Nanoseconds::max());
        break;
    default:
        _stateEnds = Nanoseconds::max();
    }
}

void Instrument::ContinueRunning(Nanoseconds now)
{
    if (_random.IsOneIn(40)) { // It ends by itself, and now and then nothing is left of it.
        SwitchOutput(false, now);
        EnterState(Terminated, Nanoseconds::max());
        _function = _random.IsOneIn(2) ? 0 : _function;
    } else if (IsRcd()) {
        SwitchOutput(false, now);
        EnterState(Completed, Nanoseconds::max());
    } else {
        _hasNewMeasurement = true;
        if (IsSingle() && _random.IsOneIn(2)) {
            SwitchOutput(false, now);
            EnterState(Completed, Nanoseconds::max());
        } else {
            _stateEnds = now + Soon(600);
        }
    }
}

QByteArray Instrument::Status(Nanoseconds now) const
{
    if (_function == 0) {
        return Wire::Status(0, PassedStartTest, true, Wire::NoError, _mode);
    }
    return Wire::Status(_function, IsStartHidden(now) ? Prepared : _state, _hasNewMeasurement, Wire::NoError,
                        _mode);
}

QByteArray Instrument::Readings()
{
    _hasNewMeasurement = false;
    if (IsRcd() && _state == PrepareError) {
        const int found = _objectCheck;
        _objectCheck = 0; // The object is put right.
        return Code(found);
    }
    return Wire::SixReadings;
}

QByteArray Instrument::Prepare(const QByteArray& payload, Nanoseconds now)
{
    if (payload.size() != PayloadSize || _mode != 0 || _isOutputOn) {
        return Wire::Refusal;
    }
    _payload = payload;
    _function = payload.at(FunctionOffset);
    _hasNewMeasurement = false;
    EnterState(Preparing, now + Soon(90));
    return Wire::Acknowledge;
}

QByteArray Instrument::Start(Nanoseconds now)
{
    const bool isCheckedAnew = IsRcd() && _state == PrepareError;
    if (_function == 0 || (_state != Prepared && !isCheckedAnew)) {
        return Wire::Refusal;
    }
    SwitchOutput(true, now);
    _hasNewMeasurement = false;
    _startHiddenUntil = _random.IsOneIn(10) ? now + Soon(300) : now;
    EnterState(Starting, now + Soon(200));
    return Wire::Acknowledge;
}

QByteArray Instrument::Stop(Nanoseconds now)
{
    const bool isRunning = _isOutputOn;
    SwitchOutput(false, now);
    if (isRunning) {
        EnterState(Stopping, now + Soon(90));
    } else {
        _function = 0;
        EnterState(Idle, Nanoseconds::max());
    }
    return Wire::Acknowledge;
}

QByteArray Instrument::ChangeMode(int mode, Nanoseconds now)
{
    SwitchOutput(false, now);
    _mode = mode;
    _function = 0;
    EnterState(Idle, Nanoseconds::max());
    _restartsUntil = now + milliseconds(300);
    return Wire::Acknowledge;
}

QByteArray Instrument::AnswerTo(const QByteArray& request, Nanoseconds now)
{
    const QByteArray data = request.mid(1, request.size() - 3);
    switch (request.at(0)) {
    case 's':
        return Status(now);
    case 'e':
        return Readings();
    case 'P':
        return Prepare(data, now);
    case 'S':
        return Start(now);
    case 'h':
        return Stop(now);
    case 'x':
        return ChangeMode(data.isEmpty() ? 0 : data.at(0), now);
    case 'V':
        return _mode == UpdateMode ? Wire::UpdateInitialized : Wire::Refusal;
    case 'F':
        return _mode == UpdateMode ? Wire::Acknowledge : Wire::Refusal;
    case 'Z':
        return _mode == UpdateMode ? ChangeMode(0, now) : Wire::Refusal;
    default:
        return Wire::AnswerTo(request);
    }
}

/// What a started RCD test sends unasked: statuses now and then, and its result, a termination or nothing.
std::vector<Chunk> Instrument::RcdFrames(Nanoseconds now)
{
    std::vector<Chunk> frames;
    const bool isCleanUp = _function == RcdIec && (_payload.at(RcdOptionsOffset) & 0x03) == CleanUp;
    if (isCleanUp || _random.IsOneIn(10)) {
        return frames;
    }
    Nanoseconds due = now;
    for (int count = _random.Below(3); count > 0; --count) {
        due += Soon(300);
        frames.push_back({due, Wire::Status(_function, Running)});
    }
    due += Soon(500);
    frames.push_back({due, _random.IsOneIn(6)
                               ? Wire::Status(_function, Terminated, false, _random.Between(1, 5))
                               : Wire::SixReadings});
    return frames;
}

std::vector<Chunk> Instrument::Answer(const QByteArray& request, Nanoseconds now)
{
    Advance(now);
    if (now < _restartsUntil) {
        return {};
    }
    const QByteArray answer = AnswerTo(request, now);
    std::vector<Chunk> chunks{{now + std::chrono::microseconds(_random.Between(500, 3000)), answer}};
    if (request == Wire::StartMeasurement && answer == Wire::Acknowledge && IsRcd()) {
        const std::vector<Chunk> unasked = RcdFrames(chunks.front().due + milliseconds(2));
        chunks.insert(chunks.end(), unasked.begin(), unasked.end());
    }
    return chunks;
}
