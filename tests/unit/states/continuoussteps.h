#pragma once

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include "unit/states/runningsteps.h"

/// What the two states that follow a continuous function have in common, their timer above all.
namespace ContinuousSteps
{

inline void AddTimeRows()
{
    QTest::addColumn<int>("time");
    for (const int time : {5, 0, -1, 600}) {
        QTest::addRow("%d seconds", time) << time;
    }
}

template <typename Settings>
Settings* WithTime(int time)
{
    auto* settings = new Settings;
    settings->SetTime(time);
    return settings;
}

template <typename RunningState, typename Settings>
void EntryMeasuresAndStartsTheTimer(const char* banner, int msOffset)
{
    QFETCH(const int, time);
    MeasurementEngine engine;
    engine.Settings(WithTime<Settings>(time));
    engine.context.MeasurementTimeElapsed.Set(true);
    RunningState state(&engine.context, nullptr);
    const QSignalSpy started(&engine.context, &Vesmar::StateMachineContext::StartMeasurementTimerRequested);
    CompareHook(engine, [&state]() { state.OnEntry(); }, banner,
                {QStringLiteral("MeasurementStatus=5"), QStringLiteral("MeasurementTimeElapsed=0")});
    QCOMPARE(started, (QList<QVariantList>{{time, msOffset}}));
}

template <typename RunningState, typename Settings>
void ExitWritesItsBannerAlone(const char* banner)
{
    MeasurementEngine engine;
    engine.Settings(new Settings);
    RunningState state(&engine.context, nullptr);
    const QSignalSpy stopped(&engine.context, &Vesmar::StateMachineContext::StopMeasurementTimerRequested);
    CompareHook(
        engine, [&state]() { state.OnExit(); }, banner);
    QCOMPARE(stopped.size(), 0);
}

/// For settings of one second.
template <typename RunningState>
void TimeElapses(Vesmar::MeasurementSettings* settings, int msOffset)
{
    constexpr int Patience = 60000;
    constexpr double CoarseTimer = 0.95; // A tick may come that much early.
    MeasurementEngine engine;
    engine.Settings(settings);
    RunningState state(&engine.context, nullptr);
    QElapsedTimer sinceEntry;
    sinceEntry.start();
    state.OnEntry();
    QTRY_VERIFY_WITH_TIMEOUT(engine.context.MeasurementTimeElapsed.Get(), Patience);
    QVERIFY(static_cast<double>(sinceEntry.elapsed()) >= (1000 + msOffset) * CoarseTimer);
    QCOMPARE(engine.context.MeasurementTime.Get(), 1);
    QVERIFY(!engine.context.GetMeasurementTimer()->isActive());
}

template <typename RunningState, typename Settings>
void ReadsAResultOnEveryStep()
{
    RunningSteps::Run<RunningState> run(new Settings);
    run.Report(7, true);
    run.state.OnRunning();
    run.state.OnRunning();
    QCOMPARE(run.Commands(), QByteArray("sese"));
    QCOMPARE(run.Outcome(), QStringLiteral("TestResults TestResults"));
}

/// Settings of a base class: the timer is started all the same, and results are those of their function.
template <typename RunningState, typename Results>
void BareSettingsDoNotCrash(Vesmar::MeasurementSettings* settings, int time)
{
    MeasurementEngine engine;
    engine.Settings(settings);
    RunningState state(&engine.context, nullptr);
    const QSignalSpy started(&engine.context, &Vesmar::StateMachineContext::StartMeasurementTimerRequested);
    state.OnEntry();
    QCOMPARE(started.size(), 1);
    QCOMPARE(started.constFirst().constFirst().toInt(), time);
    engine.Report(7, true);
    state.OnRunning();
    QVERIFY(dynamic_cast<Results*>(engine.context.TestResults.Get()) != nullptr);
}

} // namespace ContinuousSteps
