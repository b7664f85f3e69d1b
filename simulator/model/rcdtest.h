#pragma once

#include <chrono>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QStringList>

#include "simulator/control/scenarios.h"
#include "simulator/model/rcdpayload.h"
#include "simulator/model/rcdreadings.h"
#include "simulator/wire/statusword.h"
#include "simulator/wire/traffic.h"

namespace Simulator
{

/// How long the steps of an RCD test take.
struct RcdTimings {
    std::chrono::milliseconds preparing{150};
    std::chrono::milliseconds statusPeriod{200}; ///< from the start, and from one status frame, to the next
    std::chrono::milliseconds run{900};          ///< until the device under test has tripped
    std::chrono::milliseconds cleanUp{700};
};

/// The residual-current test that is selected at the instrument, from its preparation until a stop takes it
/// off the status. Unlike the other functions it tells its progress and its result by itself. It does not
/// wait; the time is handed to it.
class RcdTest
{
public:
    RcdTest(const RcdTimings& timings, quint32 seed);

    /// The number is the one that follows the scenario's name. What happens once will happen once again.
    void SetScenario(Scenario scenario, int number);

    /// False when it is refused: while a test runs.
    bool Prepare(const RcdPreparation& preparation, TimePoint now);

    /// False when it is refused: nothing is prepared, or the check before it has not been found clean.
    bool Start(TimePoint now);

    /// Takes the test off the status, whatever it does. Nothing is sent any more.
    void Stop();

    /// The same; the reason is for the list of changes.
    void Deselect(const char* reason);

    /// Lets everything happen that happens by itself until now.
    void Advance(TimePoint now);

    /// When something will next happen by itself; nothing while that depends on a request.
    std::optional<TimePoint> NextChangeAt() const;

    bool IsSelected() const { return _function != StatusWord::NoFunction; }

    /// A test runs.
    bool IsUnderWay() const { return _state == FunctionState::Running; }

    /// What the status tells while a test is selected.
    StatusWord Status() const;

    /// The 24 bytes that a read request is answered with: what the check has found, if anything. Nothing when
    /// the answer gets lost.
    std::optional<QByteArray> ReadCheckObject();

    /// What is to be sent since the last call, in its order.
    std::vector<FramePiece> CollectFrames();

    /// The changes of the state since the last call, such as "function 10 running".
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
    bool _isOnceDue = false; ///< what the scenario lets happen once has not happened yet
    int _function = StatusWord::NoFunction;
    RcdKind _kind = RcdKind::UbRe;
    FunctionState _state = FunctionState::Idle;
    bool _isCheckPending = false; ///< the check has found something that can be read
    bool _isCheckedClean = false;
    int _error = StatusWord::NoError; ///< that has ended the run
    TimePoint _enteredAt;             ///< when the state began
    TimePoint _nextStatusAt;
    std::vector<FramePiece> _frames;
    QStringList _changes;
};

} // namespace Simulator
