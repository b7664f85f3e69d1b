#pragma once

#include <QSignalSpy>
#include <QTest>

#include "unit/states/measurementengine.h"

/// What the two states that end a measurement have in common.
namespace EndingSteps
{

/// Rows for the function states 0 to 15: the requests of a step, a letter each, and what comes of it.
inline void AddRows(const QList<int>& over, const char* overOutcome)
{
    QTest::addColumn<int>("functionState");
    QTest::addColumn<QByteArray>("commands");
    QTest::addColumn<QString>("outcome");
    for (int state = 0; state < MeasurementEngine::FunctionStateCount; ++state) {
        const bool isRunning = state == 5 || state == 7;
        QTest::addRow("function state %d", state)
            << state << QByteArray(isRunning ? "sh" : "s")
            << QString(QLatin1String(over.contains(state) ? overOutcome : ""));
    }
}

/// A state that has been entered while a measurement ran, with nothing noted yet.
template <typename EndingState>
struct End : MeasurementEngine {
    EndingState state{&context, nullptr};

    End()
    {
        state.OnEntry();
        context.IsMeasurementRunning.Set(true);
        Restart();
    }
};

template <typename EndingState>
void FunctionStateDecides()
{
    QFETCH(const int, functionState);
    QFETCH(const QByteArray, commands);
    QFETCH(const QString, outcome);
    for (const bool isNewMeasurement : {false, true}) {
        End<EndingState> end;
        end.Report(functionState, isNewMeasurement);
        end.state.OnRunning();
        QCOMPARE(end.Outcome(), outcome);
        QCOMPARE(end.Commands(), commands);
    }
}

template <typename EndingState>
void StopsOnEveryStepUntilTheFunctionIsOver()
{
    End<EndingState> end;
    for (const int functionState : {7, 5, 8, 7, 9}) {
        end.Report(functionState);
        end.state.OnRunning();
    }
    QCOMPARE(
        end.peer.RequestBytes(),
        (QList<QByteArray>{Wire::ReadStatus, Wire::StopMeasurement, Wire::ReadStatus, Wire::StopMeasurement,
                           Wire::ReadStatus, Wire::ReadStatus, Wire::StopMeasurement, Wire::ReadStatus}));
    QCOMPARE(end.Outcome(), QStringLiteral("MeasurementStatus=7 IsMeasurementRunning=0"));
}

template <typename EndingState>
void FailedStatusEndsTheStep()
{
    for (const auto functionState : {Vesmar::FunctionState::Idle, Vesmar::FunctionState::Running}) {
        End<EndingState> end;
        end.RefuseWhileReporting('s', 0);
        end.context.MeasurementFunctionStatus.Set(functionState);
        end.Restart();
        end.state.OnRunning();
        QCOMPARE(end.cells.Changes(), QStringList{QStringLiteral("CommunicationError=1")});
        QCOMPARE(end.Commands(), QByteArray("s"));
    }
}

template <typename EndingState>
void FailedStopIsALostLink()
{
    End<EndingState> end;
    end.RefuseWhileReporting('h', 7);
    end.state.OnRunning();
    QCOMPARE(end.Outcome(), QStringLiteral("CommunicationError=1"));
    QCOMPARE(end.Commands(), QByteArray("sh"));
}

/// Entering stops a timer that runs, after the status has changed.
template <typename EndingState>
void EntryStopsTheTimer()
{
    MeasurementEngine engine;
    engine.context.StartMeasurementTimer(100);
    QVERIFY(engine.context.GetMeasurementTimer()->isActive());
    Vesmar::MeasurementState statusAtStop{};
    QObject receiver;
    QObject::connect(&engine.context, &Vesmar::StateMachineContext::StopMeasurementTimerRequested, &receiver,
                     [&]() { statusAtStop = engine.context.MeasurementStatus.Get(); });
    EndingState state(&engine.context, nullptr);
    state.OnEntry();
    QCOMPARE(static_cast<int>(statusAtStop), 6);
    QVERIFY(!engine.context.GetMeasurementTimer()->isActive());
}

} // namespace EndingSteps
