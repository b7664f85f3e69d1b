#include <QSignalSpy>
#include <QTest>

#include <Vesmar/monitoringresults.h>

#include "states/connection/monitoringstate.h"
#include "unit/states/enginefixture.h"

using Vesmar::MonitoringState;

class TestMonitoringState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void PollsTheStatusOnEveryStep()
    {
        Engine engine;
        engine.AnswerByCommand({{'s', Wire::Bytes("00f5babf")}});
        MonitoringState state(&engine.context, nullptr);
        state.OnRunning();
        state.OnRunning();
        QCOMPARE(engine.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadStatus, Wire::ReadStatus}));
        QCOMPARE(engine.cells.Changes(), (QStringList{QStringLiteral("CurrentMeasurementType=0"),
                                                      QStringLiteral("StartTestStatus=5")}));
        QCOMPARE(Banners(engine.log), QStringList{});
    }

    void FetchesNewReadingsAsMonitoringResults()
    {
        Engine engine;
        engine.AnswerByCommand({{'s', Wire::Bytes("80f087f4")}, {'e', Wire::SixReadings}});
        MonitoringState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.peer.RequestBytes(), (QList<QByteArray>{Wire::ReadStatus, Wire::ReadMeasurement}));
        const auto* results = dynamic_cast<Vesmar::MonitoringResults*>(engine.context.TestResults.Get());
        QVERIFY(results != nullptr);
        QCOMPARE(results->GetMeasurementType(), Vesmar::MeasurementType::Monitoring);
        QCOMPARE(results->_uln, 1.0F);
        QCOMPARE(results->_unpe, 2.0F);
        QCOMPARE(results->_frequency, 3.0F);
    }

    void StopsAFunctionUntilTheInstrumentIsIdle()
    {
        Engine engine;
        const QByteArray running = Wire::Bytes("05f70d60"); // Function 5.
        engine.peer.AnswerInTurn(
            {running, Wire::Acknowledge, running, Wire::Acknowledge, Wire::StartTest0Status});
        MonitoringState state(&engine.context, nullptr);
        state.OnRunning();
        state.OnRunning();
        state.OnRunning();
        QCOMPARE(engine.peer.RequestBytes(),
                 (QList<QByteArray>{Wire::ReadStatus, Wire::StopMeasurement, Wire::ReadStatus,
                                    Wire::StopMeasurement, Wire::ReadStatus}));
        QVERIFY(!engine.context.CommunicationError.Get());
    }

    void StopsAFunctionEvenWithNewReadings()
    {
        Engine engine;
        engine.AnswerByCommand(
            {{'s', Wire::Bytes("85f7957b")}, {'h', Wire::Acknowledge}, {'e', Wire::SixReadings}});
        MonitoringState state(&engine.context, nullptr);
        state.OnRunning();
        QVERIFY(engine.context.NewMeasurement.Get());
        QCOMPARE(engine.Commands(), QByteArray("sh"));
    }

    void MeasurementEndsWhenNoFunctionIsActiveAndNotBefore()
    {
        Engine engine;
        engine.transciever.SetMaxRetransmissions(0);
        engine.peer.AnswerInTurn(
            {Wire::Refusal, Wire::RcdRunningStatus, Wire::Acknowledge, Wire::IdleStatus});
        MonitoringState state(&engine.context, nullptr);
        engine.context.IsMeasurementRunning.Set(true);
        engine.context.StartMeasurementTimer(-1);
        for (int step = 0; step < 2; ++step) {
            state.OnRunning();
            QVERIFY(engine.context.IsMeasurementRunning.Get());
            QVERIFY(engine.context.GetMeasurementTimer()->isActive());
        }
        state.OnRunning();
        QCOMPARE(engine.Commands(), QByteArray("sshs"));
        QVERIFY(!engine.context.IsMeasurementRunning.Get());
        QVERIFY(!engine.context.GetMeasurementTimer()->isActive());
    }

    void TimerThatDoesNotRunIsNotStopped()
    {
        Engine engine;
        engine.AnswerByCommand({{'s', Wire::IdleStatus}});
        MonitoringState state(&engine.context, nullptr);
        const QSignalSpy stops(&engine.context, &Vesmar::StateMachineContext::StopMeasurementTimerRequested);
        state.OnRunning();
        engine.context.StartMeasurementTimer(-1);
        engine.context.StopMeasurementTimer();
        state.OnRunning();
        QCOMPARE(stops.count(), 1);
    }

    void FailedStatusEndsTheStep()
    {
        Engine engine;
        engine.transciever.SetMaxRetransmissions(0);
        engine.AnswerByCommand({{'s', Wire::Refusal}});
        MonitoringState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.Commands(), QByteArray("s"));
        QCOMPARE(engine.cells.Changes(), QStringList{QStringLiteral("CommunicationError=1")});
    }

    void FailedStatusEndsTheStepWhateverTheCellsHold()
    {
        Engine engine;
        engine.transciever.SetMaxRetransmissions(0);
        engine.context.NewMeasurement.Set(true);
        engine.AnswerByCommand({{'s', Wire::Refusal}});
        MonitoringState state(&engine.context, nullptr);
        engine.context.CurrentMeasurementType.Set(Vesmar::MeasurementType::IPE);
        state.OnRunning();
        engine.context.CurrentMeasurementType.Set(Vesmar::MeasurementType::Monitoring);
        state.OnRunning();
        QCOMPARE(engine.Commands(), QByteArray("ss"));
    }

    void FailedStopRaisesCommunicationError()
    {
        Engine engine;
        engine.transciever.SetMaxRetransmissions(0);
        engine.AnswerByCommand({{'s', Wire::Bytes("05f70d60")}, {'h', Wire::Refusal}});
        MonitoringState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.Commands(), QByteArray("sh"));
        QVERIFY(engine.context.CommunicationError.Get());
    }

    void FailedReadRaisesCommunicationError()
    {
        Engine engine;
        engine.transciever.SetMaxRetransmissions(0);
        const Vesmar::MeasurementResults* before = engine.context.TestResults.Get();
        engine.AnswerByCommand({{'s', Wire::Bytes("80f087f4")}, {'e', Wire::Bytes("31323334356c54")}});
        MonitoringState state(&engine.context, nullptr);
        state.OnRunning();
        QCOMPARE(engine.Commands(), QByteArray("se"));
        QVERIFY(engine.context.CommunicationError.Get());
        QCOMPARE(engine.context.TestResults.Get(), before);
    }
};

QTEST_GUILESS_MAIN(TestMonitoringState)
#include "tst_monitoringstate.moc"
