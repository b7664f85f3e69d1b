#include <atomic>

#include <QTest>

#include "states/configuration/restartingtesterstate.h"
#include "unit/states/enginefixture.h"
#include "unit/states/pauselog.h"

using Vesmar::OperationMode;
using Vesmar::RestartingTesterState;

Q_DECLARE_METATYPE(OperationMode)

class TestRestartingTesterState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ModeChangeIsTheOnlyFrameInNormalAndUpdateMode_data()
    {
        QTest::addColumn<OperationMode>("mode");
        QTest::newRow("normal") << OperationMode::Normal;
        QTest::newRow("update") << OperationMode::Update;
    }

    void ModeChangeIsTheOnlyFrameInNormalAndUpdateMode()
    {
        QFETCH(const OperationMode, mode);
        Engine engine;
        const PauseLog pauses;
        engine.context.TesterMode.Set(mode);
        engine.context.RestartRequested.Set(true);
        engine.AnswerByCommand({{'x', Wire::Acknowledge}});
        engine.cells.Clear();
        RestartingTesterState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(pauses.Text(), QStringLiteral("2000"));
        QCOMPARE(engine.peer.RequestBytes(), QList<QByteArray>{Wire::ChangeToNormalMode});
        QCOMPARE(engine.cells.Changes(), QStringList{QStringLiteral("RestartRequested=0")});
        QCOMPARE(Banners(engine.log), QStringList{});
    }

    void AsksForTheStatusAfterThePauseInAnyOtherMode_data()
    {
        QTest::addColumn<OperationMode>("mode");
        QTest::newRow("calibration") << OperationMode::Calibration;
        QTest::newRow("mode 2") << OperationMode::Mode2;
    }

    void AsksForTheStatusAfterThePauseInAnyOtherMode()
    {
        QFETCH(const OperationMode, mode);
        Engine engine;
        engine.context.TesterMode.Set(mode);
        engine.context.RestartRequested.Set(true);
        engine.AnswerByCommand({{'x', Wire::Acknowledge}, {'s', Wire::StartTest0Status}});
        engine.cells.Clear();
        RestartingTesterState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.peer.RequestBytes(), (QList<QByteArray>{Wire::ChangeToNormalMode, Wire::ReadStatus}));
        QCOMPARE(engine.GapAfter(0).count(), 4 + 2000);
        QCOMPARE(
            engine.cells.Changes(),
            (QStringList{QStringLiteral("RestartRequested=0"), QStringLiteral("TesterMode=0"),
                         QStringLiteral("CurrentMeasurementType=0"), QStringLiteral("StartTestStatus=0")}));
    }

    void ClearsTheRequestWhenTheModeChangeFailedToo()
    {
        Engine engine;
        engine.transciever.SetMaxRetransmissions(0);
        engine.context.RestartRequested.Set(true);
        engine.AnswerByCommand({{'x', Wire::Refusal}});
        engine.cells.Clear();
        RestartingTesterState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.Commands(), QByteArray("x"));
        QCOMPARE(engine.cells.Changes(),
                 (QStringList{QStringLiteral("CommunicationError=1"), QStringLiteral("RestartRequested=0"),
                              QStringLiteral("CommunicationError=0")}));
    }

    void FailedStatusIsALostLink()
    {
        Engine engine;
        engine.transciever.SetMaxRetransmissions(0);
        engine.context.TesterMode.Set(OperationMode::Mode2);
        engine.AnswerByCommand({{'x', Wire::Refusal}, {'s', Wire::Refusal}});
        engine.cells.Clear();
        RestartingTesterState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.Commands(), QByteArray("xs"));
        QCOMPARE(engine.cells.Changes(),
                 Changes("CommunicationError=1 CommunicationError=0 CommunicationError=1"));
    }

    void ClearsAnEarlierCommunicationError()
    {
        Engine engine;
        engine.context.CommunicationError.Set(true);
        engine.context.RestartRequested.Set(true);
        engine.AnswerByCommand({{'x', Wire::Acknowledge}});
        engine.cells.Clear();
        RestartingTesterState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.cells.Changes(),
                 (QStringList{QStringLiteral("RestartRequested=0"), QStringLiteral("CommunicationError=0")}));
    }

    void ClearsTheRequestBeforeThePause()
    {
        Engine engine;
        engine.context.TesterMode.Set(OperationMode::Mode2);
        engine.context.RestartRequested.Set(true);
        std::atomic<bool> requestedAtModeChange{false};
        std::atomic<bool> requestedAtStatus{true};
        engine.peer.Answer([&](const QByteArray& request) {
            const bool isModeChange = request == Wire::ChangeToNormalMode;
            (isModeChange ? requestedAtModeChange : requestedAtStatus) =
                engine.context.RestartRequested.Get();
            return isModeChange ? Wire::Acknowledge : Wire::StartTest0Status;
        });
        RestartingTesterState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.Commands(), QByteArray("xs"));
        QVERIFY(requestedAtModeChange);
        QVERIFY(!requestedAtStatus);
    }
};

QTEST_GUILESS_MAIN(TestRestartingTesterState)
#include "tst_restartingtesterstate.moc"
