#include <QTest>

#include "states/rcd/rcdmeasurementmodestate.h"
#include "unit/states/enginefixture.h"

using Vesmar::RCDMeasurementModeState;

class TestRCDMeasurementModeState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryWritesItsBannerAlone();
    void ExitWritesItsBannerAlone();
    void StepsDoNothing();
};

void TestRCDMeasurementModeState::EntryWritesItsBannerAlone()
{
    Engine engine;
    RCDMeasurementModeState state(&engine.context, nullptr);
    CompareHook(
        engine, [&state]() { state.OnEntry(); }, "ENTERING RCD MEASUREMENT MODE STATE ");
}

void TestRCDMeasurementModeState::ExitWritesItsBannerAlone()
{
    Engine engine;
    RCDMeasurementModeState state(&engine.context, nullptr);
    CompareHook(
        engine, [&state]() { state.OnExit(); }, "LEAVING RCD MEASUREMENT MODE STATE ");
}

void TestRCDMeasurementModeState::StepsDoNothing()
{
    Engine engine;
    RCDMeasurementModeState state(&engine.context, nullptr);
    for (Vesmar::ThreadSafeProperty<bool>* request :
         {&engine.context.PrepareMeasurementRequested, &engine.context.StartMeasurementRequested,
          &engine.context.AbortMeasurementRequested}) {
        request->Set(true);
        engine.cells.Clear();
        engine.log.Clear();
        state.OnRunning();
        QCOMPARE(engine.cells.Changes(), QStringList());
        QCOMPARE(engine.log.Texts(), QStringList());
        QCOMPARE(engine.Commands(), QByteArray());
    }
}

QTEST_GUILESS_MAIN(TestRCDMeasurementModeState)
#include "tst_rcdmeasurementmodestate.moc"
