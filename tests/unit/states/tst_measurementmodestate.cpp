#include <QTest>

#include "states/measurement/measurementmodestate.h"
#include "unit/states/enginefixture.h"

using Vesmar::MeasurementModeState;

class TestMeasurementModeState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryForgetsThePreviousMeasurement();
    void EntryChangesNothingWhenThereWasNone();
    void ExitWritesItsBannerAlone();
    void RunningDoesNothing();
};

void TestMeasurementModeState::EntryForgetsThePreviousMeasurement()
{
    Engine engine;
    MeasurementModeState state(&engine.context, nullptr);
    engine.context.IsMeasurementRunning.Set(true);
    engine.context.AbortMeasurementRequested.Set(true);
    engine.context.PrepareMeasurementRequested.Set(true);
    engine.context.StartMeasurementRequested.Set(true);
    CompareHook(engine, [&state]() { state.OnEntry(); }, "ENTERING MEASUREMENT MODE STATE ",
                {QStringLiteral("IsMeasurementRunning=0"), QStringLiteral("AbortMeasurementRequested=0")});
}

void TestMeasurementModeState::EntryChangesNothingWhenThereWasNone()
{
    Engine engine;
    MeasurementModeState state(&engine.context, nullptr);
    CompareHook(
        engine, [&state]() { state.OnEntry(); }, "ENTERING MEASUREMENT MODE STATE ");
}

void TestMeasurementModeState::ExitWritesItsBannerAlone()
{
    Engine engine;
    MeasurementModeState state(&engine.context, nullptr);
    CompareHook(
        engine, [&state]() { state.OnExit(); }, "LEAVING MEASUREMENT MODE STATE ");
}

void TestMeasurementModeState::RunningDoesNothing()
{
    Engine engine;
    engine.peer.AnswerAlways(Wire::Acknowledge);
    MeasurementModeState state(&engine.context, nullptr);
    engine.context.PrepareMeasurementRequested.Set(true);
    engine.context.StartMeasurementRequested.Set(true);
    engine.log.Clear();
    engine.cells.Clear();
    state.OnRunning();
    QCOMPARE(engine.log.Texts(), QStringList{});
    QCOMPARE(engine.cells.Changes(), QStringList{});
    QCOMPARE(engine.peer.RequestBytes(), QList<QByteArray>{});
}

QTEST_GUILESS_MAIN(TestMeasurementModeState)
#include "tst_measurementmodestate.moc"
