#include "simulator/line/player.h"
#include "simulator/line/recordingfile.h"

#include "fuzz/jsontext.h"

using namespace Simulator;

namespace
{

void RequireLimits(const RecordedEntry& entry)
{
    constexpr int LongestFrame = 2048;
    constexpr std::chrono::minutes LongestPause{10};
    Require(entry.request.size() <= LongestFrame && entry.bytes.size() <= LongestFrame,
            "frames have their limit");
    Require(entry.after.count() >= 0 && entry.after <= LongestPause, "pauses have their limit");
    Require(entry.IsUnasked() ? !entry.bytes.isEmpty() : entry.after.count() == 0,
            "only what nobody asked for has a pause, and it has bytes");
}

/// Asks for what was recorded, and for what was not recorded.
void CheckPlaying(const std::vector<RecordedEntry>& recording)
{
    Player player(recording);
    TimePoint now;
    std::size_t frames = 0;
    for (const RecordedEntry& entry : recording) {
        const auto answer = player.Answer(entry.IsUnasked() ? QByteArray("s") : entry.request, now);
        Require(answer.has_value() || entry.IsUnasked(), "what was recorded has an answer");
        now += std::chrono::milliseconds(300);
        frames += player.CollectFrames(now).size();
    }
    Require(frames <= recording.size() * recording.size(), "a frame comes once at each place");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray text = Input(data, size).Rest();
    try {
        const std::vector<RecordedEntry> recording = ParseRecording(text);
        Require(!recording.empty() && !recording.front().IsUnasked(), "a recording begins with a request");
        for (const RecordedEntry& entry : recording) {
            RequireLimits(entry);
        }
        CheckPlaying(recording);
    } catch (const JsonError& error) {
        RequirePlace(error, text);
    }
    return 0;
}
