#pragma once

#include <chrono>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QStringList>

#include "simulator/control/scenarios.h"
#include "simulator/model/preparepayload.h"
#include "simulator/model/rcdreadings.h"
#include "simulator/wire/statusword.h"
#include "simulator/wire/traffic.h"

namespace Simulator
{

/// The durations of the steps of an RCD test.
struct RcdTimings {
    std::chrono::milliseconds preparing{150};
    std::chrono::milliseconds statusPeriod{
        200};                           ///< from the start or a status frame to the next status frame
    std::chrono::milliseconds run{900}; ///< until the device under test has tripped
    std::chrono::milliseconds cleanUp{700};
};

/// The RCD test that is selected at the instrument, from its preparation until a stop deselects it. Unlike
/// the other functions, the test sends its progress and its result unasked. It never waits: its caller tells
/// it the time.
class RcdTest
{
public:
    RcdTest(const RcdTimings& timings, quint32 seed);

    /// The number is the one that follows the scenario's name. What a scenario lets happen once will happen
    /// once again.
    void SetScenario(Scenario scenario, int number);

    /// Returns false when the preparation is refused, as it is while a test runs.
    bool Prepare(const RcdPreparation& preparation, TimePoint now);

    /// Returns false when the start is refused because nothing is prepared, or the check has not been found
    /// clean.
    bool Start(TimePoint now);

    /// Deselects the test, whatever it does. Nothing more is sent.
    void Stop();

    /// Does the same for a reason, which goes into the list of changes.
    void Deselect(const char* reason);

    /// Lets everything happen that happens by itself up to this time.
    void Advance(TimePoint now);

    /// Returns when something will next happen by itself, or nothing while only a request can change
    /// anything.
    std::optional<TimePoint> NextChangeAt() const;

    bool IsSelected() const { return _function != StatusWord::NoFunction; }

    /// Returns whether a test runs.
    bool IsUnderWay() const { return _state == FunctionState::Running; }

    /// Returns the status that is reported while a test is selected.
    StatusWord Status() const;

    /// Returns the 24 bytes that answer a read request: the result of the check, if there is one. Returns
    /// nothing when the answer gets lost.
    std::optional<QByteArray> ReadCheckObject();

    /// Returns what has to be sent since the last call, in its order.
    std::vector<FramePiece> CollectFrames();

    /// Returns the changes of the state since the last call, such as "function 10 running".
    QStringList CollectChanges();

private:
    bool HasCheckObject() const;
    bool IsDueOnce(Scenario scenario);
    int CheckCode();
    int Error() const;
    TimePoint EndOfRun() const;
    void FinishPreparing(TimePoint at);
    void FinishRun(TimePoint at);
    void Terminate(TimePoint at);
    void SendStatus();
    void SendResult();
    void Send(const QByteArray& frame);
    void ChangeTo(FunctionState state, const char* change, TimePoint at);
    void RecordChange(const QString& change);

    RcdTimings _timings;
    RcdReadings _readings;
    Scenario _scenario = Scenario::None;
    int _scenarioNumber = 0;
    bool _isOnceDue = false; ///< set until what the scenario lets happen once has happened
    int _function = StatusWord::NoFunction;
    RcdKind _kind = RcdKind::UbRe;
    FunctionState _state = FunctionState::Idle;
    bool _isCheckPending = false; ///< set while the result of the check can be read
    bool _isCheckedClean = false;
    int _error = StatusWord::NoError; ///< the error that has ended the run
    TimePoint _enteredAt;             ///< when the state began
    TimePoint _nextStatusAt;
    std::vector<FramePiece> _frames;
    QStringList _changes;
};

} // namespace Simulator
