#include <QTest>

#include "states/connection/testeroperationsstate.h"
#include "unit/states/enginefixture.h"

class TestTesterOperationsState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryWritesItsBannerAlone();
    void RunningDoesNothing();
    void ExitWritesItsBannerAlone();
};

void TestTesterOperationsState::EntryWritesItsBannerAlone()
{
    Engine engine;
    Vesmar::TesterOperationsState state(&engine.context, nullptr);
    CompareHook(
        engine, [&state]() { state.OnEntry(); }, "ENTERING TESTER OPERATIONS STATE");
}

void TestTesterOperationsState::RunningDoesNothing()
{
    Engine engine;
    Vesmar::TesterOperationsState state(&engine.context, nullptr);
    engine.log.Clear();
    state.OnRunning();
    QCOMPARE(engine.log.Texts(), QStringList{});
    QCOMPARE(engine.cells.Changes(), QStringList{});
    QCOMPARE(engine.Commands(), QByteArray{});
}

void TestTesterOperationsState::ExitWritesItsBannerAlone()
{
    Engine engine;
    Vesmar::TesterOperationsState state(&engine.context, nullptr);
    CompareHook(
        engine, [&state]() { state.OnExit(); }, "LEAVING TESTER OPERATIONS STATE");
}

QTEST_GUILESS_MAIN(TestTesterOperationsState)
#include "tst_testeroperationsstate.moc"
