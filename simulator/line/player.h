#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include <QByteArray>

#include "simulator/wire/traffic.h"

namespace Simulator
{

/// Answers as a recording says, in its order. Requests are told apart by their first byte, their letter. Like
/// the model it knows nothing of lines, threads or waiting; the time is handed to it.
class Player
{
public:
    explicit Player(std::vector<RecordedEntry> recording);

    /// The answer to a request of at least one byte, empty where none was recorded; nothing for a request of
    /// which the recording does not tell up to here.
    std::optional<QByteArray> Answer(const QByteArray& request, TimePoint now);

    /// What was recorded behind the last entry that was played and is to be sent unasked until now.
    std::vector<FramePiece> CollectFrames(TimePoint now);

    /// When `CollectFrames()` will next have something, if ever.
    std::optional<TimePoint> NextFrameAt() const { return _frameAt; }

private:
    std::optional<std::size_t> FindExchange(char letter) const;
    void GoBehind(std::size_t index, TimePoint playedAt);

    std::vector<RecordedEntry> _recording;
    std::size_t _position = 0;               ///< of the next entry
    std::optional<TimePoint> _frameAt;       ///< set while the next entry goes out by itself
    std::map<char, QByteArray> _lastAnswers; ///< of each letter that has been recorded up to the position
};

} // namespace Simulator
