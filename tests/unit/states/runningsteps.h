#pragma once

#include <QTest>

#include <Vesmar/measurementresults.h>

#include "unit/states/measurementengine.h"

/// What every running state does with the status, whatever its function.
namespace RunningSteps
{

inline const char* const EndedOutcome = "ErrorCode=202 AbortMeasurementRequested=1";

/// Rows for an instrument that has no result.
inline void AddRowsWithoutResult()
{
    AddFunctionStateRows(
        {{0, EndedOutcome}, {3, EndedOutcome}, {4, EndedOutcome}, {6, EndedOutcome}, {9, EndedOutcome}});
}

/// A running state that has been entered, with nothing noted yet.
template <typename RunningState>
struct Run : MeasurementEngine {
    RunningState state{&context, nullptr};

    explicit Run(Vesmar::MeasurementSettings* settings)
    {
        Settings(settings);
        state.OnEntry();
        Restart();
    }
};

template <typename RunningState, typename Settings>
void FollowsAFunctionWithoutResult()
{
    QFETCH(const int, functionState);
    QFETCH(const QString, outcome);
    Run<RunningState> run(new Settings);
    run.Report(functionState);
    run.state.OnRunning();
    QCOMPARE(run.Outcome(), outcome);
    QCOMPARE(run.peer.RequestBytes(), QList<QByteArray>{Wire::ReadStatus});
}

/// In any function state; `outcome` is what reading it makes of the cells.
template <typename RunningState, typename Settings>
void ReadsANewResult(const char* outcome)
{
    QFETCH(const int, functionState);
    Run<RunningState> run(new Settings);
    run.Report(functionState, true);
    run.state.OnRunning();
    QCOMPARE(run.Outcome(), QString(QLatin1String(outcome)));
    QCOMPARE(run.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadStatus, Wire::ReadMeasurement}));
}

/// The results are of the class that belongs to the settings, not to what the status says.
template <typename RunningState, typename Settings, typename Results>
void ReadsTheResultOfItsSettings()
{
    Run<RunningState> run(new Settings);
    run.Report(7, true);
    run.state.OnRunning();
    const auto* results = dynamic_cast<Results*>(run.context.TestResults.Get());
    QVERIFY(results != nullptr);
    QCOMPARE(results->_values, (std::array<float, 6>{1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F}));
}

template <typename RunningState, typename Settings>
void EndLeavesAnEarlierError()
{
    Run<RunningState> run(new Settings);
    run.Report(9, false, 6);
    run.state.OnRunning();
    QCOMPARE(run.Outcome(), QStringLiteral("ErrorCode=6 AbortMeasurementRequested=1"));
}

template <typename RunningState, typename Settings>
void FailedStatusEndsTheStep()
{
    for (const bool isNewMeasurement : {false, true}) {
        Run<RunningState> run(new Settings);
        run.RefuseWhileReporting('s', 0);
        run.context.NewMeasurement.Set(isNewMeasurement);
        run.context.MeasurementFunctionStatus.Set(Vesmar::FunctionState::Idle);
        run.Restart();
        run.state.OnRunning();
        QCOMPARE(run.cells.Changes(), QStringList{QStringLiteral("CommunicationError=1")});
        QCOMPARE(run.Commands(), QByteArray("s"));
    }
}

template <typename RunningState, typename Settings>
void FailedReadIsALostLink(const char* outcome)
{
    Run<RunningState> run(new Settings);
    const Vesmar::MeasurementResults* before = run.context.TestResults.Get();
    run.RefuseWhileReporting('e', 9, true);
    run.state.OnRunning();
    QCOMPARE(run.Outcome(), QString(QLatin1String(outcome)));
    QCOMPARE(run.context.TestResults.Get(), before);
    QCOMPARE(run.Commands(), QByteArray("se"));
}

} // namespace RunningSteps
