#pragma once

#include <QByteArray>

#include <chrono>
#include <functional>

namespace Cli
{

/// What came back for a request for the status.
enum class LineAnswer {
    Proper,
    Refused,
    Damaged, ///< A wrong checksum or length.
    Silent   ///< Nothing came.
};

/// What the bytes are that came back.
LineAnswer Classify(const QByteArray& answer);

/// One request for the status, and what came of it.
struct LineExchange {
    QByteArray answer;                 ///< Empty where nothing came.
    std::chrono::microseconds time{0}; ///< From the end of writing the request to the answer's first byte.
    int lineError = 0;                 ///< Why the line itself failed; 0, or an error number.
};

/// Asks the instrument for its status, on a line of its own. It waits in the calling thread.
class LineProbe
{
public:
    /// How long the instrument may take to begin its answer.
    static constexpr std::chrono::seconds UsualPatience{4};
    /// After so long, people want to know what is waited for.
    static constexpr std::chrono::milliseconds PatienceOfPeople{1000};

    /// Sets the line up as the instrument needs it. The descriptor stays the caller's, who has opened it for
    /// reading and writing without waiting.
    explicit LineProbe(int descriptor, std::chrono::milliseconds patience = UsualPatience);

    /// Calls this while an answer takes longer than `PatienceOfPeople`.
    void OnLateAnswer(const std::function<void()>& tell) { _tellLateAnswer = tell; }

    /// Makes the pause that the instrument needs, sends the request and waits for the answer and its end. An
    /// answer without an end is cut off.
    LineExchange AskForStatus() const;

private:
    bool Send(LineExchange& exchange) const;
    void Collect(LineExchange& exchange) const;
    bool WaitForAnswer() const;
    bool WaitForBytes(std::chrono::milliseconds limit) const;
    bool Read(LineExchange& exchange) const;

    int _descriptor;
    std::chrono::milliseconds _patience;
    std::function<void()> _tellLateAnswer = [] {};
};

} // namespace Cli
