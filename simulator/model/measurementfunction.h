#pragma once

#include <chrono>
#include <optional>

#include <QByteArray>
#include <QStringList>

#include "simulator/control/scenarios.h"
#include "simulator/model/readings.h"
#include "simulator/wire/measurement.h"
#include "simulator/wire/statusword.h"
#include "simulator/wire/traffic.h"

namespace Simulator
{

/// How long the steps of a measurement take.
struct FunctionTimings {
    std::chrono::milliseconds preparing{150};
    std::chrono::milliseconds startDelay{50}; ///< from an accepted start until the status tells of it
    std::chrono::milliseconds starting{150};
    std::chrono::milliseconds singleRun{1000};
    std::chrono::milliseconds runWithoutResult{300}; ///< of `Scenario::EndsWithoutResult`
    std::chrono::milliseconds runOn{2000};           ///< of `Scenario::RunsOnAfterStop`
    std::chrono::milliseconds stopping{150};
};

/// The measurement function that is selected at the instrument, from its preparation until a stop takes it
/// off the status again. It does not wait; the time is handed to it.
class MeasurementFunction
{
public:
    static constexpr std::chrono::milliseconds ResultPeriod{100};

    MeasurementFunction(const FunctionTimings& timings, quint32 seed);

    void SetScenario(Scenario scenario) { _scenario = scenario; }

    /// False when it is refused: while a function is under way.
    bool Prepare(Measurement measurement, TimePoint now);

    /// False when it is refused: nothing is prepared.
    bool Start(TimePoint now);

    /// Ends what is under way. A function that has come to rest is taken off the status, but only after the
    /// status has told of that state: whoever stopped it a moment too late must still learn how it ended.
    void Stop(TimePoint now);

    /// As if someone had started this function at the instrument: it runs without results until it is
    /// stopped.
    void RunForeign(int number);

    /// Takes the function off the status, whatever it does. The reason is for the list of changes.
    void Deselect(const char* reason);

    /// Lets everything happen that happens by itself until now.
    void Advance(TimePoint now);

    /// When the state will next change by itself; nothing while it depends on a request.
    std::optional<TimePoint> NextChangeAt() const;

    bool IsSelected() const { return _number != 0; }

    /// It is being started, runs or stops.
    bool IsUnderWay() const;

    int Number() const { return _number; }
    FunctionState State() const { return _state; }
    bool HasNewResult() const { return _hasNewResult; }

    /// The status has told the present state.
    void MarkReported(TimePoint now);

    /// The latest result; it is no longer a new one.
    QByteArray ReadResult();

    /// The changes of the state since the last call, such as "function 9 running".
    QStringList CollectChanges();

private:
    bool DeliversResults() const;
    bool WaitsForReport() const;
    std::optional<std::chrono::milliseconds> TimeInState() const;
    void EnterNextState(TimePoint at);
    void EnterAfterStarting(TimePoint at);
    void EnterAfterRunning(TimePoint at);
    void Complete(TimePoint at);
    void DeliverResults(TimePoint now);
    void ChangeTo(FunctionState state, const char* change, TimePoint at);
    void RecordChange(const char* change);

    FunctionTimings _timings;
    Readings _readings;
    Scenario _scenario = Scenario::None;
    int _number = 0;
    std::optional<Measurement> _measurement; ///< none of a foreign function
    FunctionState _state = FunctionState::Idle;
    TimePoint _countsFrom; ///< from here on runs the time that ends the state
    bool _isStartPending = false;
    bool _runsOn = false; ///< a stop was asked for and is put off
    bool _hasNewResult = false;
    TimePoint _nextResultAt;
    std::optional<TimePoint> _reportedAt; ///< when the status first told the present state
    QStringList _changes;
};

} // namespace Simulator
