#include <QTest>

#include "states/measurement/stoppingmeasurementstate.h"
#include "unit/states/endingsteps.h"

using Vesmar::StoppingMeasurementState;

class TestStoppingMeasurementState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EntryStopsTheTimer();

    void FunctionStateDecides_data();
    void FunctionStateDecides();
    void LeavesAStartRequested();
    void StopsOnEveryStepUntilTheFunctionIsOver();
    void FailedStatusEndsTheStep();
    void FailedStopIsALostLink();
};

void TestStoppingMeasurementState::EntryStopsTheTimer()
{
    EndingSteps::EntryStopsTheTimer<StoppingMeasurementState>();
}

void TestStoppingMeasurementState::FunctionStateDecides_data()
{
    EndingSteps::AddRows({0, 2, 4, 9}, "MeasurementStatus=7 IsMeasurementRunning=0");
}

void TestStoppingMeasurementState::FunctionStateDecides()
{
    EndingSteps::FunctionStateDecides<StoppingMeasurementState>();
}

void TestStoppingMeasurementState::LeavesAStartRequested()
{
    EndingSteps::End<StoppingMeasurementState> end;
    end.context.StartMeasurementRequested.Set(true);
    end.Report(9);
    end.state.OnRunning();
    QVERIFY(end.context.StartMeasurementRequested.Get());
}

void TestStoppingMeasurementState::StopsOnEveryStepUntilTheFunctionIsOver()
{
    EndingSteps::StopsOnEveryStepUntilTheFunctionIsOver<StoppingMeasurementState>();
}

void TestStoppingMeasurementState::FailedStatusEndsTheStep()
{
    EndingSteps::FailedStatusEndsTheStep<StoppingMeasurementState>();
}

void TestStoppingMeasurementState::FailedStopIsALostLink()
{
    EndingSteps::FailedStopIsALostLink<StoppingMeasurementState>();
}

QTEST_GUILESS_MAIN(TestStoppingMeasurementState)
#include "tst_stoppingmeasurementstate.moc"
