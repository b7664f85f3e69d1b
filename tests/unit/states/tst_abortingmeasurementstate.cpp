#include <QTest>

#include "states/measurement/abortingmeasurementstate.h"
#include "unit/states/endingsteps.h"

using Vesmar::AbortingMeasurementState;

static const QList<int> Over = {0, 1, 2, 3, 4, 6, 9};

class TestAbortingMeasurementState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryStopsTheTimer() { EndingSteps::EntryStopsTheTimer<AbortingMeasurementState>(); }

    void FunctionStateDecides_data()
    {
        EndingSteps::AddRows(Over, "MeasurementStatus=7 IsMeasurementRunning=0");
    }

    void FunctionStateDecides() { EndingSteps::FunctionStateDecides<AbortingMeasurementState>(); }

    void DropsAStartOfTheAbortedFunction_data()
    {
        EndingSteps::AddRows(Over, "MeasurementStatus=7 IsMeasurementRunning=0 StartMeasurementRequested=0");
    }

    void DropsAStartOfTheAbortedFunction()
    {
        QFETCH(const int, functionState);
        QFETCH(const QString, outcome);
        EndingSteps::End<AbortingMeasurementState> end;
        end.context.StartMeasurementRequested.Set(true);
        end.Report(functionState);
        end.Restart();
        end.state.OnRunning();
        QCOMPARE(end.Outcome(), outcome);
    }

    void KeepsAStartThatFollowsAPreparation()
    {
        EndingSteps::End<AbortingMeasurementState> end;
        end.context.StartMeasurementRequested.Set(true);
        end.context.PrepareMeasurementRequested.Set(true);
        end.Report(9);
        end.Restart();
        end.state.OnRunning();
        QCOMPARE(end.Outcome(), QStringLiteral("MeasurementStatus=7 IsMeasurementRunning=0"));
        QVERIFY(end.context.StartMeasurementRequested.Get());
        QVERIFY(end.context.PrepareMeasurementRequested.Get());
    }

    void StopsOnEveryStepUntilTheFunctionIsOver()
    {
        EndingSteps::StopsOnEveryStepUntilTheFunctionIsOver<AbortingMeasurementState>();
    }

    /// The function ends between a status and the stop that follows it.
    void NoFunctionAfterAnAcknowledgedStopIsTheEnd()
    {
        for (const int functionState : {5, 7}) {
            EndingSteps::End<AbortingMeasurementState> end;
            end.Report(functionState);
            end.state.OnRunning();
            end.AnswerByCommand({{'s', Wire::IdleStatus}});
            end.state.OnRunning();
            QCOMPARE(end.Commands(), QByteArray("shs"));
            QCOMPARE(end.Outcome(), QStringLiteral("MeasurementStatus=7 IsMeasurementRunning=0"));
        }
    }

    void NoFunctionWithoutAnAcknowledgedStopIsNoEnd()
    {
        EndingSteps::End<AbortingMeasurementState> end;
        end.context.MeasurementFunctionStatus.Set(Vesmar::FunctionState::Running);
        end.AnswerByCommand({{'s', Wire::IdleStatus}, {'h', Wire::Refusal}});
        for (int step = 0; step < 3; ++step) {
            end.Restart();
            end.state.OnRunning();
            QCOMPARE(end.Commands(), QByteArray("sh"));
            QCOMPARE(static_cast<int>(end.context.MeasurementStatus.Get()), 6);
        }
    }

    void StopOfAnEarlierVisitDoesNotCount()
    {
        EndingSteps::End<AbortingMeasurementState> end;
        end.Report(7);
        end.state.OnRunning();
        end.state.OnExit();
        end.state.OnEntry();
        end.AnswerByCommand({{'s', Wire::IdleStatus}, {'h', Wire::Acknowledge}});
        end.Restart();
        end.state.OnRunning();
        QCOMPARE(end.Commands(), QByteArray("sh"));
        QCOMPARE(static_cast<int>(end.context.MeasurementStatus.Get()), 6);
    }

    /// No function has ever been active, so that the state of the function is still unknown.
    void FreshInstrumentWithNothingPreparedIsWaitedForWithoutEnd()
    {
        EndingSteps::End<AbortingMeasurementState> end;
        end.AnswerByCommand({{'s', Wire::IdleStatus}});
        for (int step = 0; step < 5; ++step) {
            end.state.OnRunning();
        }
        QCOMPARE(end.Commands(), QByteArray("sssss"));
        QCOMPARE(end.Outcome(), QString());
        QCOMPARE(static_cast<int>(end.context.MeasurementFunctionStatus.Get()), -1);
    }

    void FailedStatusEndsTheStep() { EndingSteps::FailedStatusEndsTheStep<AbortingMeasurementState>(); }

    void FailedStopIsALostLink() { EndingSteps::FailedStopIsALostLink<AbortingMeasurementState>(); }
};

QTEST_GUILESS_MAIN(TestAbortingMeasurementState)
#include "tst_abortingmeasurementstate.moc"
