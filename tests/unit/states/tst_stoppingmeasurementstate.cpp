#include <QTest>

#include "states/measurement/stoppingmeasurementstate.h"
#include "unit/states/endingsteps.h"

using Vesmar::StoppingMeasurementState;

class TestStoppingMeasurementState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryStopsTheTimer() { EndingSteps::EntryStopsTheTimer<StoppingMeasurementState>(); }

    void FunctionStateDecides_data()
    {
        EndingSteps::AddRows({0, 2, 4, 9}, "MeasurementStatus=7 IsMeasurementRunning=0");
    }

    void FunctionStateDecides() { EndingSteps::FunctionStateDecides<StoppingMeasurementState>(); }

    void LeavesAStartRequested()
    {
        EndingSteps::End<StoppingMeasurementState> end;
        end.context.StartMeasurementRequested.Set(true);
        end.Report(9);
        end.state.OnRunning();
        QVERIFY(end.context.StartMeasurementRequested.Get());
    }

    void StopsOnEveryStepUntilTheFunctionIsOver()
    {
        EndingSteps::StopsOnEveryStepUntilTheFunctionIsOver<StoppingMeasurementState>();
    }

    void FailedStatusEndsTheStep() { EndingSteps::FailedStatusEndsTheStep<StoppingMeasurementState>(); }

    void FailedStopIsALostLink() { EndingSteps::FailedStopIsALostLink<StoppingMeasurementState>(); }
};

QTEST_GUILESS_MAIN(TestStoppingMeasurementState)
#include "tst_stoppingmeasurementstate.moc"
