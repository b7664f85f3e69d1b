#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include <QByteArray>

#include "simulator/wire/traffic.h"

namespace Simulator
{

/// Answers as a recording tells, in its order. Only the first byte of a request, its letter, matters. Like
/// the model, the player knows nothing of lines and threads and never waits: its caller tells it the time.
class Player
{
public:
    explicit Player(std::vector<RecordedEntry> recording);

    /// Returns the answer to a request of at least one byte; it is empty where silence was recorded. Returns
    /// nothing for a request that the recording does not contain up to here.
    std::optional<QByteArray> Answer(const QByteArray& request, TimePoint now);

    /// Returns the frames behind the last entry played that have to be sent unasked by now.
    std::vector<FramePiece> CollectFrames(TimePoint now);

    /// Returns when `CollectFrames()` will next have a frame, or nothing when only a request can bring one.
    std::optional<TimePoint> NextFrameAt() const { return _frameAt; }

private:
    std::optional<std::size_t> FindExchange(char letter) const;
    void GoBehind(std::size_t index, TimePoint playedAt);

    std::vector<RecordedEntry> _recording;
    std::size_t _position = 0;               ///< of the next entry
    std::optional<TimePoint> _frameAt;       ///< set while the next entry goes out by itself
    std::map<char, QByteArray> _lastAnswers; ///< for each letter that was recorded up to the position
};

} // namespace Simulator
