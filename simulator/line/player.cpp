#include "simulator/line/player.h"

#include <algorithm>
#include <utility>

#include "simulator/wire/frames.h"

namespace Simulator
{

namespace
{

/// Without a pause, a program could mistake unasked bytes for a part of an answer that went out at the same
/// moment.
constexpr std::chrono::milliseconds QuietTime{20};

/// Returns whether a request only reads. A program may read more or less often than the recorded program did.
bool IsRead(char letter)
{
    switch (static_cast<RequestCode>(letter)) {
    case RequestCode::ReadStatus:
    case RequestCode::ReadVersion:
    case RequestCode::ReadCurrentDate:
    case RequestCode::ReadCalibrationDate:
    case RequestCode::ReadMeasurement:
        return true;
    default:
        return false;
    }
}

} // namespace

Player::Player(std::vector<RecordedEntry> recording) : _recording(std::move(recording)) {}

std::optional<QByteArray> Player::Answer(const QByteArray& request, TimePoint now)
{
    const char letter = request.at(0);
    if (const std::optional<std::size_t> found = FindExchange(letter)) {
        GoBehind(*found, now);
    }
    const auto last = _lastAnswers.find(letter);
    return last != _lastAnswers.end() ? std::make_optional(last->second) : std::nullopt;
}

std::vector<FramePiece> Player::CollectFrames(TimePoint now)
{
    std::vector<FramePiece> frames;
    while (_frameAt && *_frameAt <= now) {
        const RecordedEntry& entry = _recording.at(_position);
        frames.push_back({entry.bytes, std::min(entry.after, QuietTime)});
        GoBehind(_position, *_frameAt);
    }
    return frames;
}

/// Finds the next exchange with this letter. The search for a read ends at the next command, because that
/// command brings about what is read behind it.
std::optional<std::size_t> Player::FindExchange(char letter) const
{
    for (std::size_t i = _position; i < _recording.size(); ++i) {
        const RecordedEntry& entry = _recording.at(i);
        if (entry.IsUnasked()) {
            continue;
        }
        if (entry.request.at(0) == letter) {
            return i;
        }
        if (IsRead(letter) && !IsRead(entry.request.at(0))) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

void Player::GoBehind(std::size_t index, TimePoint playedAt)
{
    for (; _position <= index; ++_position) {
        const RecordedEntry& entry = _recording.at(_position);
        if (!entry.IsUnasked()) {
            _lastAnswers[entry.request.at(0)] = entry.bytes;
        }
    }
    _frameAt.reset();
    if (_position < _recording.size() && _recording.at(_position).IsUnasked()) {
        _frameAt = playedAt + _recording.at(_position).after;
    }
}

} // namespace Simulator
