#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "explorer/choices.h"
#include "explorer/line.h"

/// All that decides what the instrument answers. The numbers are those of the line.
struct InstrumentState {
    std::int8_t function = 0;       ///< The active function; 0 while there is none.
    std::int8_t functionState = 0;  ///< The state of the active function.
    bool isStartPending = false;    ///< A start was acknowledged, and "prepared" is still reported.
    bool hasNew = false;            ///< Readings wait to be read.
    std::int8_t mode = 0;           ///< 0 is the normal mode, 3 the update mode.
    bool hasPassedStartTest = true; ///< The start test's result is 14, and not 0.

    /// Whether it applies, or is about to apply, what the function needs to the object under test.
    bool IsOutputOn() const;
};

/// What an instrument does that only some of the machine's states look at.
struct Freedom {
    bool faults = false;     ///< It refuses, stays silent, damages an answer, or loses one.
    bool startTest = false;  ///< The start test turns out otherwise.
    bool errors = false;     ///< A status reports an error.
    bool surprises = false;  ///< It restarts by itself, and somebody starts other functions at it.
    bool updateMode = false; ///< It restarts into update mode, or into the fourth mode.
};

/// One thing that the instrument can do when it is asked.
struct Turn {
    const char* words;
    void (*apply)(InstrumentState& state);
};

/// An instrument that answers at once, and whose every free choice is one of the explorer's. The first
/// alternative is always what a faultless one does.
class Instrument : public Line::Peer
{
public:
    /// Called with each request before anything is answered to it.
    using Watcher = std::function<void(const QByteArray& request)>;

    /// After each request, `meanwhile` is called while the driver waits for the answer.
    void BeginStep(Choices& choices, Watcher watcher, std::function<void()> meanwhile);
    /// What it did in this step that was not usual, in words.
    const std::vector<std::string>& Story() const { return _story; }
    void Tell(const std::string& words) { _story.push_back(words); }

    QByteArray Answer(const QByteArray& request) override;
    void Released() override { _meanwhile(); }
    QByteArray Speak() override;

    InstrumentState state;
    Freedom freedom;

private:
    enum class Fault { None, Refused, Silent, Damaged };

    QByteArray AnswerUnlessFaulty(const QByteArray& request);
    QByteArray AnswerFaultily(Fault fault, const QByteArray& request);
    std::size_t Choose(const std::vector<Turn>& turns, std::size_t others);
    QByteArray Execute(const QByteArray& request);
    QByteArray Data(const QByteArray& request);
    QByteArray Readings();

    Choices* _choices = nullptr;
    Watcher _watcher;
    std::function<void()> _meanwhile;
    std::vector<std::string> _story;
    Fault _lastingFault = Fault::None; ///< It meets every repetition of the request in the same step.
    QByteArray _faultyRequest;
    int _error = 15; ///< What the status under way reports.
};
