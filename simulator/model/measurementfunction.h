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

/// The durations of the steps of a measurement.
struct FunctionTimings {
    std::chrono::milliseconds preparing{150};
    std::chrono::milliseconds startDelay{50}; ///< from an accepted start until the status shows it
    std::chrono::milliseconds starting{150};
    std::chrono::milliseconds singleRun{1000};
    std::chrono::milliseconds runWithoutResult{300}; ///< for `Scenario::EndsWithoutResult`
    std::chrono::milliseconds runOn{2000};           ///< for `Scenario::RunsOnAfterStop`
    std::chrono::milliseconds stopping{150};
};

/// The measurement function that is selected at the instrument, from its preparation until a stop deselects
/// it. It never waits: its caller tells it the time.
class MeasurementFunction
{
public:
    static constexpr std::chrono::milliseconds ResultPeriod{100};

    MeasurementFunction(const FunctionTimings& timings, quint32 seed);

    void SetScenario(Scenario scenario) { _scenario = scenario; }

    /// Returns false when the preparation is refused, as it is while a function is under way.
    bool Prepare(Measurement measurement, TimePoint now);

    /// Returns false when the start is refused because nothing is prepared.
    bool Start(TimePoint now);

    /// Ends a function that is under way, and deselects one that is at rest. The latter happens only after
    /// the status has reported that rest: a program whose stop came a moment too late must still learn how
    /// the function ended.
    void Stop(TimePoint now);

    /// Behaves as if someone had started this function at the instrument: it runs without results until it is
    /// stopped.
    void RunForeign(int number);

    /// Deselects the function, whatever it does. The reason goes into the list of changes.
    void Deselect(const char* reason);

    /// Lets everything happen that happens by itself up to this time.
    void Advance(TimePoint now);

    /// Returns when the state will next change by itself, or nothing while only a request can change it.
    std::optional<TimePoint> NextChangeAt() const;

    bool IsSelected() const { return _number != 0; }

    /// Returns whether the function is being started, runs or is being stopped.
    bool IsUnderWay() const;

    int Number() const { return _number; }
    FunctionState State() const { return _state; }
    bool HasNewResult() const { return _hasNewResult; }

    /// Tells that the status has reported the present state.
    void MarkReported(TimePoint now);

    /// Returns the latest result, which is no longer a new one after that.
    QByteArray ReadResult();

    /// Returns the changes of the state since the last call, such as "function 9 running".
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
    std::optional<Measurement> _measurement; ///< unset for a function that was started at the instrument
    FunctionState _state = FunctionState::Idle;
    TimePoint _countsFrom; ///< the time that ends the state counts from here
    bool _isStartPending = false;
    bool _runsOn = false; ///< a stop was requested and is put off
    bool _hasNewResult = false;
    TimePoint _nextResultAt;
    std::optional<TimePoint> _reportedAt; ///< when the status first reported the present state
    QStringList _changes;
};

} // namespace Simulator
